// Reads a vocabulary document into a tree. The only file that knows the YAML library.
//
// The library's events are taken rather than its own nodes, which cost as much again as the reading. It refuses documents
// nested more than some hundred levels deep by itself.
#include <gjf/core/schema/schema_document.hpp>
#include <gjf/core/schema/schema_image.hpp>

#include <core/resource/resource.hpp>

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/yaml.h>

#include <exception>
#include <fstream>
#include <memory>
#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

namespace {

/// A document of more bytes is refused: no vocabulary comes near it, and the memory that reading takes is a multiple of it.
constexpr std::streamoff document_limit = 32 << 20;

/// Builds the tree as the parser meets the nodes.
class TreeBuilder : public YAML::EventHandler {
   public:
    explicit TreeBuilder(DocumentTree& tree) : tree_(tree) {}

    void OnDocumentStart(const YAML::Mark&) override {}
    void OnDocumentEnd() override {}
    void OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) override {
        add(tree_.add(DocumentTree::Kind::Null, line_of(mark)), anchor);
    }
    void OnAlias(const YAML::Mark&, YAML::anchor_t anchor) override { pending_.push_back(anchored_.at(anchor)); }
    void OnScalar(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor, const std::string& text) override {
        add(tree_.add_scalar(text, line_of(mark)), anchor);
    }
    void OnSequenceStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                         YAML::EmitterStyle::value) override {
        open(DocumentTree::Kind::Sequence, line_of(mark), anchor);
    }
    void OnSequenceEnd() override { close(); }
    void OnMapStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor, YAML::EmitterStyle::value) override {
        open(DocumentTree::Kind::Map, line_of(mark), anchor);
    }
    void OnMapEnd() override { close(); }

   private:
    struct OpenNode {
        DocumentTree::NodeId id;
        std::size_t first_child;  ///< index in `pending_`
    };

    void add(DocumentTree::NodeId id, YAML::anchor_t anchor) {
        if (anchor != 0) {
            anchored_[anchor] = id;
        }
        pending_.push_back(id);
    }

    static std::size_t line_of(const YAML::Mark& mark) { return static_cast<std::size_t>(mark.line) + 1; }

    void open(DocumentTree::Kind kind, std::size_t line, YAML::anchor_t anchor) {
        const DocumentTree::NodeId id = tree_.add(kind, line);
        add(id, anchor);
        open_.push_back({id, pending_.size()});
    }

    void close() {
        const OpenNode node = open_.back();
        open_.pop_back();
        tree_.set_children(node.id, pending_.data() + node.first_child, pending_.size() - node.first_child);
        pending_.resize(node.first_child);
    }

    DocumentTree& tree_;
    std::vector<DocumentTree::NodeId> pending_;  ///< nodes whose parent is still open, in order
    std::vector<OpenNode> open_;
    std::unordered_map<YAML::anchor_t, DocumentTree::NodeId> anchored_;
};

/// The bytes of a whole regular file, into memory that was not filled before.
class FileBytes {
   public:
    /// Reads them; false when the file cannot be read or is too long.
    bool read(const std::string& path) {
        if (!quor::core::resource::is_regular_file_path(path)) {
            return false;
        }
        std::ifstream file(path, std::ios::binary | std::ios::ate);
        const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : -1;
        if (size < 0 || size > document_limit) {
            return false;
        }
        size_ = static_cast<std::size_t>(size);
        bytes_ = std::make_unique_for_overwrite<char[]>(size_);
        file.seekg(0);
        file.read(bytes_.get(), size);
        return file.gcount() == size;
    }
    std::string_view view() const { return {bytes_.get(), size_}; }

   private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
};

bool parse_document(std::string text, DocumentTree& tree) {
    std::istringstream stream(std::move(text));
    YAML::Parser parser(stream);
    TreeBuilder builder(tree);
    return parser.HandleNextDocument(builder);
}

/// Fills empty tables from the document's image; false, with the tables empty, when it has none that serves.
bool load_image_of(const std::string& path, std::string_view document, SimpleYAMLParser::Impl& schema) {
    FileBytes image;
    const std::string image_path = find_schema_image(path);
    return !image_path.empty() && image.read(image_path) && read_schema_image(image.view(), document, schema);
}

}  // namespace

bool read_document_tree(const std::string& path, DocumentTree& tree) {
    FileBytes document;
    return document.read(path) && parse_document(std::string(document.view()), tree);
}

std::optional<SchemaProblem> read_document_or_problem(const std::string& path, DocumentTree& tree) {
    try {
        if (!read_document_tree(path, tree)) {
            return SchemaProblem{0, "the file cannot be read, is too long or holds no document"};
        }
        return std::nullopt;
    } catch (const YAML::Exception& error) {
        return SchemaProblem{static_cast<std::size_t>(error.mark.line) + 1, error.msg};
    }
}

bool convert_boolean(std::string_view text) { return YAML::Node(std::string(text)).as<bool>(); }

bool load_schema_text(std::string document, SimpleYAMLParser::Impl& schema) {
    try {
        DocumentTree tree;
        if (!parse_document(std::move(document), tree)) {
            return false;
        }
        const DocumentNode root(tree);
        if (!root.find("states").is_map()) {
            return false;
        }
        schema.load_schema(root);
        return true;
    } catch (const std::bad_alloc&) {
        throw;  // says nothing about the document
    } catch (const std::exception&) {
        return false;
    }
}

bool load_schema_document(const std::string& path, SimpleYAMLParser::Impl& schema) {
    FileBytes document;
    return document.read(path) &&
           (load_image_of(path, document.view(), schema) || load_schema_text(std::string(document.view()), schema));
}

}  // namespace quor::input::gaussian
