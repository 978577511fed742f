// write_schema_image [--version 1|2] DOCUMENT IMAGE: loads a vocabulary document and writes its image: all tables, as the
// library looks for them beside the document; with --version the shorter one that is carried as base64 text.
//
// The image is read back before it is written. Exit status: 0, 1 for a document that does not load or a file that cannot be
// written, 2 for wrong usage.
#include "embedded_image.hpp"

#include <core/fs/write_text_file.hpp>
#include <gjf/core/schema/embedded_schema.hpp>
#include <gjf/core/schema/schema_document.hpp>
#include <gjf/core/schema/schema_image.hpp>

#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;

int fail(int status, const std::string& message) {
    std::cerr << "write_schema_image: " << message << '\n';
    return status;
}

/// Writes the image of one version of base64 text, or, for version 0, of all tables.
int write_image(unsigned version, const std::string& document, const std::string& image) {
    std::ostringstream content;
    content << std::ifstream(document, std::ios::binary).rdbuf();
    const std::string text = content.str();
    SimpleYAMLParser::Impl schema;
    if (!load_schema_text(text, schema)) {
        return fail(1, document + ": not a vocabulary document");
    }
    const std::string bytes =
        version == 0 ? write_schema_image(schema, text) : encode_base64(SchemaImageWriter(schema, version).write());
    SimpleYAMLParser::Impl read_back;
    if (version == 0 ? !read_schema_image(bytes, text, read_back) : !load_embedded_schema_from_base64(read_back, bytes)) {
        return fail(1, document + ": the image does not read back");
    }
    if (!quor::core::fs::write_text_file(image, bytes)) {
        return fail(1, image + ": cannot be written");
    }
    return 0;
}

}  // namespace

int main(int argument_count, char** arguments) {
    try {
        std::vector<std::string> words(arguments + 1, arguments + argument_count);
        std::string version = "0";
        if (words.size() == 4 && words.front() == "--version" && (words[1] == "1" || words[1] == "2")) {
            version = words[1];
            words.erase(words.begin(), words.begin() + 2);
        }
        if (words.size() != 2) {
            return fail(2, "usage: write_schema_image [--version 1|2] DOCUMENT IMAGE");
        }
        return write_image(static_cast<unsigned>(version.front() - '0'), words[0], words[1]);
    } catch (const std::exception& error) {
        return fail(1, error.what());
    }
}
