// write_schema_image [--version 1|2] DOCUMENT IMAGE: loads a vocabulary document and writes its binary image as base64 text.
//
// Version 2, the default, is the shorter one. The image is read back before it is written. Exit status: 0, 1 for a document
// that does not load or a file that cannot be written, 2 for wrong usage.
#include "schema_image.hpp"

#include <core/fs/write_text_file.hpp>
#include <gjf/core/schema/embedded_schema.hpp>
#include <gjf/core/schema/schema_document.hpp>

#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;

int fail(int status, const std::string& message) {
    std::cerr << "write_schema_image: " << message << '\n';
    return status;
}

int write_image(unsigned version, const std::string& document, const std::string& image) {
    SimpleYAMLParser::Impl schema;
    if (!load_schema_document(document, schema)) {
        return fail(1, document + ": not a vocabulary document");
    }
    const std::string text = encode_base64(SchemaImageWriter(schema, version).write());
    SimpleYAMLParser::Impl read_back;
    if (!load_embedded_schema_from_base64(read_back, text)) {
        return fail(1, document + ": the image does not read back");
    }
    if (!quor::core::fs::write_text_file(image, text)) {
        return fail(1, image + ": cannot be written");
    }
    return 0;
}

}  // namespace

int main(int argument_count, char** arguments) {
    try {
        std::vector<std::string> words(arguments + 1, arguments + argument_count);
        std::string version = "2";
        if (words.size() == 4 && words.front() == "--version") {
            version = words[1];
            words.erase(words.begin(), words.begin() + 2);
        }
        if (words.size() != 2 || (version != "1" && version != "2")) {
            return fail(2, "usage: write_schema_image [--version 1|2] DOCUMENT IMAGE");
        }
        return write_image(version == "1" ? 1 : 2, words[0], words[1]);
    } catch (const std::exception& error) {
        return fail(1, error.what());
    }
}
