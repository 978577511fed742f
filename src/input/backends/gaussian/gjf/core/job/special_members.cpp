// Constructors, assignments and destructors of the job model, defined here so that the library exports them.
#include <gjf/core/job/gjf_data.hpp>

namespace quor::input::gaussian {

#define QUOR_GJF_DEFAULT_MEMBERS(Type)                \
    Type::Type() = default;                           \
    Type::Type(const Type&) = default;                \
    Type::Type(Type&&) noexcept = default;            \
    Type& Type::operator=(const Type&) = default;     \
    Type& Type::operator=(Type&&) noexcept = default; \
    Type::~Type() = default;

QUOR_GJF_DEFAULT_MEMBERS(AtomInfo)
QUOR_GJF_DEFAULT_MEMBERS(AtomCoord)
QUOR_GJF_DEFAULT_MEMBERS(ZMatrixEntry)
QUOR_GJF_DEFAULT_MEMBERS(GeomSection)
QUOR_GJF_DEFAULT_MEMBERS(ControlSection)
QUOR_GJF_DEFAULT_MEMBERS(ConnectivitySection)
QUOR_GJF_DEFAULT_MEMBERS(ExtraInputSection)
QUOR_GJF_DEFAULT_MEMBERS(GJFData)
QUOR_GJF_DEFAULT_MEMBERS(GJFMultiData)

#undef QUOR_GJF_DEFAULT_MEMBERS

}  // namespace quor::input::gaussian
