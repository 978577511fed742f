// Every operation of the editor, as a table that can be run on a job of any size.
#pragma once

#include <gjf/gjf.hpp>

#include <cstddef>
#include <vector>

namespace quor::benchmarks {

/// What operations work on: an editor of a large ONIOM job with bonds, and arguments made in advance.
struct Workbench {
    explicit Workbench(const input::gaussian::GJFData& job);

    input::gaussian::GJFEditor editor;
    std::size_t count;                     ///< of atoms
    input::gaussian::AtomCoord atom;       ///< one to add
    std::vector<std::size_t> every_third;  ///< atoms
    std::vector<std::size_t> reversed;     ///< all atoms
    input::gaussian::GJFData spare;        ///< a job to put in; only where `Before` asks for it
};

/// What is done before each run, out of the time measured.
enum class Before {
    Nothing,      ///< the editor as the run before left it
    Route,        ///< the route as it was read
    PlainRoute,   ///< a route of one method and basis set, which an ONIOM route is not
    Everything,   ///< the whole job as it was read
    Spare,        ///< and a copy of it in `spare`
    TextOfBonds,  ///< no section but the bonds, as text of no kind
};

struct EditorOperation {
    const char* name;
    Before before;
    void (*run)(Workbench& bench, std::size_t turn);
};

/// Returns all operations, in the order of the editor's header.
const std::vector<EditorOperation>& editor_operations();

/// Does what an operation needs before its next run; `job` is the one the bench was made of.
void prepare(Workbench& bench, Before before, const input::gaussian::GJFData& job);

}  // namespace quor::benchmarks
