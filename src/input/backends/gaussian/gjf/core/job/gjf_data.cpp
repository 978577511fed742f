// Special members of the job model and the queries on a job.
#include <gjf/core/job/gjf_data.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>

#include <stdexcept>

namespace quor::input::gaussian {

GJFParseException::GJFParseException(const std::string& message) : std::runtime_error("GJF Parse Error: " + message) {}
GJFParseException::~GJFParseException() = default;

}  // namespace quor::input::gaussian
