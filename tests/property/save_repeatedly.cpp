// Saves two texts to one file in turn until it is killed: save_repeatedly PATH ATOMS. Says "ready" after the first save.
#include <gjf/gjf.hpp>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace gjf = quor::input::gaussian;

namespace {

gjf::GJFEditor make_job(const std::string& element, int atoms) {
    gjf::GJFData data;
    data.control.route_keywords = {"#", "hf/sto-3g"};
    data.title = element;
    data.geom.multiplicity = 1;
    gjf::AtomCoord atom;
    atom.info.element = element;
    data.geom.atoms.assign(static_cast<std::size_t>(atoms), atom);
    return gjf::GJFEditor(data);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    const int atoms = std::atoi(argv[2]);
    const gjf::GJFEditor first = make_job("He", atoms);
    const gjf::GJFEditor second = make_job("Ne", 2 * atoms);
    first.save_to_file(argv[1]);
    std::puts("ready");
    std::fflush(stdout);
    while (true) {
        second.save_to_file(argv[1]);
        first.save_to_file(argv[1]);
    }
}
