// Adds nodes to a document tree and looks values up in it.
#include <gjf/core/schema/document_tree.hpp>

namespace quor::input::gaussian {

DocumentTree::NodeId DocumentTree::add(Kind kind, std::size_t line) {
    Item item;
    item.kind = kind;
    item.line = static_cast<std::uint32_t>(line);
    items_.push_back(item);
    return static_cast<NodeId>(items_.size() - 1);
}

DocumentTree::NodeId DocumentTree::add_scalar(std::string_view text, std::size_t line) {
    const NodeId node = add(Kind::Scalar, line);
    items_[node].first = static_cast<std::uint32_t>(text_.size());
    items_[node].count = static_cast<std::uint32_t>(text.size());
    text_ += text;
    return node;
}

void DocumentTree::set_children(NodeId node, const NodeId* children, std::size_t count) {
    Item& item = items_[node];
    item.first = static_cast<std::uint32_t>(children_.size());
    item.count = static_cast<std::uint32_t>(count);
    children_.insert(children_.end(), children, children + count);
}

std::string_view DocumentNode::text() const noexcept {
    if (!is_scalar()) {
        return {};
    }
    const DocumentTree::Item& item = tree_->items_[id_];
    return std::string_view(tree_->text_).substr(item.first, item.count);
}

std::size_t DocumentNode::size() const noexcept {
    if (is_sequence()) {
        return tree_->items_[id_].count;
    }
    return is_map() ? tree_->items_[id_].count / 2 : 0;
}

DocumentNode DocumentNode::find(std::string_view name) const {
    if (is_scalar()) {
        throw std::invalid_argument("a scalar where a map is needed");
    }
    if (is_map()) {
        for (std::size_t index = 0; index < size(); ++index) {
            const DocumentNode candidate = key(index);
            if (candidate.is_scalar() && candidate.text() == name) {
                return value(index);
            }
        }
    }
    return {};
}

}  // namespace quor::input::gaussian
