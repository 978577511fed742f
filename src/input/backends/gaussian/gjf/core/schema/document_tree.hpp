// A document as a tree of null, scalar, sequence and map nodes, in three flat arrays. Private to the room.
//
// A vocabulary has tens of thousands of nodes, each looked at once; a node here is sixteen bytes and no allocation of its
// own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Holds the nodes. A node may be the child of several others, and even of itself, where the document has aliases.
class DocumentTree {
   public:
    enum class Kind : std::uint8_t { Null, Scalar, Sequence, Map };
    using NodeId = std::uint32_t;

    /// Adds a node without content that begins in a line, counted from 1; returns its number, which counts from 0: the first
    /// is the root.
    NodeId add(Kind kind, std::size_t line);
    NodeId add_scalar(std::string_view text, std::size_t line);
    /// Gives a sequence its elements, or a map its keys and values in turn.
    void set_children(NodeId node, const NodeId* children, std::size_t count);

   private:
    friend class DocumentNode;

    /// Counts a look at a child of a node. Throws std::length_error when there were far more than a document of this size
    /// needs: aliases can name one large node many times.
    void count_look() const {
        constexpr std::size_t fixed_limit = 2'000'000;
        constexpr std::size_t limit_per_node = 64;
        if (++looks_ > fixed_limit + limit_per_node * items_.size()) {
            throw std::length_error("too much work for a document of this size");
        }
    }

    struct Item {
        std::uint32_t first = 0;  ///< where its text or its children begin
        std::uint32_t count = 0;
        std::uint32_t line = 0;
        Kind kind = Kind::Null;
    };

    std::vector<Item> items_;
    std::vector<NodeId> children_;
    std::string text_;
    mutable std::size_t looks_ = 0;
};

/// Points at one node of a tree that outlives it, or at none.
class DocumentNode {
   public:
    DocumentNode() = default;
    explicit DocumentNode(const DocumentTree& tree, DocumentTree::NodeId id = 0) : tree_(&tree), id_(id) {}

    bool is_present() const noexcept { return tree_ != nullptr; }
    bool is_scalar() const noexcept { return has_kind(DocumentTree::Kind::Scalar); }
    bool is_sequence() const noexcept { return has_kind(DocumentTree::Kind::Sequence); }
    bool is_map() const noexcept { return has_kind(DocumentTree::Kind::Map); }

    /// Returns a scalar's text; an empty text for any other node.
    std::string_view text() const noexcept;

    /// Returns the line in which the node begins, from 1; 0 for no node.
    std::size_t line() const noexcept { return tree_ == nullptr ? 0 : tree_->items_[id_].line; }

    /// Counts the elements of a sequence or the pairs of a map; 0 for any other node.
    std::size_t size() const noexcept;
    /// Returns an element of a sequence; `index` counts from 0 and is below `size()`.
    DocumentNode element(std::size_t index) const { return child(index); }
    DocumentNode key(std::size_t index) const { return child(2 * index); }
    DocumentNode value(std::size_t index) const { return child(2 * index + 1); }

    /// Finds the value of the first pair with this key in a map; none in a node of another kind. Throws
    /// std::invalid_argument when this is a scalar, which stands where a map is needed.
    DocumentNode find(std::string_view name) const;

   private:
    bool has_kind(DocumentTree::Kind kind) const noexcept { return tree_ != nullptr && tree_->items_[id_].kind == kind; }
    DocumentNode child(std::size_t index) const {
        tree_->count_look();
        return DocumentNode(*tree_, tree_->children_[tree_->items_[id_].first + index]);
    }

    const DocumentTree* tree_ = nullptr;
    DocumentTree::NodeId id_ = 0;
};

}  // namespace quor::input::gaussian
