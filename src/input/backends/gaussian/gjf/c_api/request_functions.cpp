// The C functions of requests.
#include <gjf/c_api/error_frame.hpp>
#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/core/report/request.hpp>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

struct quor_gjf_result {
    std::string text;
};

namespace {

using namespace quor::input::gaussian;
using namespace quor::input::gaussian::c_api;

// What fails for its arguments is answered; want of memory is not.
std::string answer_to(const char* command, std::string_view text, const char* options) {
    try {
        return request_json(command, text, options == nullptr ? "" : options);
    } catch (const std::logic_error& error) {
        return request_error_json(error.what());
    } catch (const std::runtime_error& error) {
        return request_error_json(error.what());
    }
}

}  // namespace

extern "C" {

gjf_result* gjf_request(const char* command, const char* text, size_t size, const char* options) noexcept {
    return guarded(nullptr, static_cast<gjf_result*>(nullptr), [&] {
        require(command != nullptr, "command is null");
        require(text != nullptr || size == 0, "text is null");
        auto result = std::make_unique<quor_gjf_result>();
        result->text = answer_to(command, std::string_view(size == 0 ? "" : text, size), options);
        return result.release();
    });
}

const char* gjf_result_text(const gjf_result* result) noexcept { return result == nullptr ? "" : result->text.c_str(); }

size_t gjf_result_size(const gjf_result* result) noexcept { return result == nullptr ? 0 : result->text.size(); }

void gjf_result_destroy(gjf_result* result) noexcept { delete result; }
}
