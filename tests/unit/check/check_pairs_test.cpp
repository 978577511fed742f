// Texts that raise a code of the checker, and near ones that do not, beside the two of each code in checks.md.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

struct Pair {
    const char* code;
    std::string raises;
    std::string near;
};

// A job with a route line, and a molecule behind the title.
std::string job(const std::string& route,
                const std::string& molecule = "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n",
                const std::string& rest = "") {
    return route + "\n\ntitle\n\n" + molecule + "\n" + (rest.empty() ? "" : rest + "\n");
}

const std::string hydrogen = "0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n";
const std::string methanol =
    "0 1\nC 0.0 0.0 0.0\nO 0.0 0.0 1.42\nH 0.0 0.95 1.70\nH 0.51 0.90 -0.36\nH -1.03 0.0 -0.36\nH 0.51 -0.90 -0.36\n";
const std::string ethane_layers =
    "C 0.0 0.0 0.0 H\nH -0.39 1.02 0.0 H\nH -0.39 -0.51 -0.89 H\nH -0.39 -0.51 0.89 H\nC 1.53 0.0 0.0 L H 1\nH 1.92 -1.02 "
    "0.0 L\n"
    "H 1.92 0.51 0.89 L\nH 1.92 0.51 -0.89 L\n";

// Without the number of the atom that the link atom is bonded to.
const std::string hostless_layers =
    "C 0.0 0.0 0.0 H\nH -0.39 1.02 0.0 H\nH -0.39 -0.51 -0.89 H\nH -0.39 -0.51 0.89 H\nC 1.53 0.0 0.0 L H\nH 1.92 -1.02 "
    "0.0 L\nH 1.92 0.51 0.89 L\nH 1.92 0.51 -0.89 L\n";

const std::string dimer = "H(Fragment=1) 0.0 0.0 0.0\nH(Fragment=1) 0.0 0.0 0.74\nHe(Fragment=2) 0.0 0.0 4.0\n";
const std::string gen = "O 0\n6-31G(d)\n****\nH 0\n6-31G\n****\n";

std::string oniom(const std::string& pairs, const std::string& atoms = ethane_layers) {
    return job("# oniom(hf/sto-3g:pm6)", pairs + "\n" + atoms);
}

std::string periodic(const std::string& vectors) {
    return job("# pbepbe/sto-3g", "0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 3.0\n" + vectors);
}

std::string qst(const std::string& second) { return job("# opt=qst2 hf/sto-3g", hydrogen, "second\n\n" + second); }

std::string with_basis(const std::string& section) {
    return job("# hf/gen", "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n", section);
}

std::string bonds(const std::string& rows) {
    return job("# hf/sto-3g geom=connectivity", "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n", rows);
}

std::string changes(const std::string& rows) { return job("# hf/sto-3g opt=modredundant", methanol, rows); }

std::string gics(const std::string& rows) { return job("# hf/sto-3g opt=addgic", methanol, rows + "\n"); }

const std::string plain = job("# hf/sto-3g");

const std::vector<Pair>& pairs() {
    static const std::vector<Pair> table = {
        {"GJF-L001", "%chkk=a\n" + plain, "%chk=a\n" + plain},
        {"GJF-L001", "%nprocshard=4\n" + plain, "%nprocshared=4\n" + plain},
        {"GJF-L001", "%oldma=a\n" + plain, "%oldmatrix=a\n" + plain},
        {"GJF-L001", "%frobnicate=4\n" + plain, "%lindaworkers=node1:4\n" + plain},
        {"GJF-L002", "%mem=lots\n" + plain, "%mem=4000MB\n" + plain},
        {"GJF-L002", "%mem=4 GB\n" + plain, "%mem=4GB\n" + plain},
        {"GJF-L002", "%mem=4XB\n" + plain, "%mem=500MW\n" + plain},
        {"GJF-L003", "%mem=400000000\n" + plain, "%mem=400MW\n" + plain},
        {"GJF-L004", "%mem=100MB\n%nprocshared=4\n" + plain, "%mem=100MB\n" + plain},
        {"GJF-L005", "%nprocshared=4\n%cpu=0-7\n" + plain, "%cpu=0-7\n" + plain},
        {"GJF-L013", "%chk\n" + plain, "%chk=a\n" + plain},
        {"GJF-L013", "%chk=\n" + plain, "%chk = a\n" + plain},
        {"GJF-L013", "%oldchk a.chk\n" + plain, "%oldchk=a.chk\n" + plain},
        {"GJF-L013", "%mem 4GB\n" + plain, "%mem=4GB\n%nosave\n" + plain},
        {"GJF-L006", "%cpu=0-a\n" + plain, "%cpu=0-3,8\n" + plain},
        {"GJF-L006", "%cpu=7-0\n" + plain, "%cpu=7\n" + plain},
        {"GJF-L006", "%cpu=+1\n" + plain, "%cpu=0-0\n" + plain},
        {"GJF-L006", "%cpu=0-2147483648\n" + plain, "%cpu=2147483647\n" + plain},
        {"GJF-L006", "%nprocshared=four\n" + plain, "%nprocshared=4\n" + plain},
        {"GJF-L007", "%chk=a\n" + plain + "--Link1--\n%chk=a.chk\n" + plain,
         "%chk=a\n" + plain + "--Link1--\n%chk=a\n# hf/sto-3g geom=allcheck\n\n"},
        {"GJF-L007", "%chk=a\n" + plain + "--Link1--\n%chk=a\n" + plain, "%chk=a\n" + plain + "--Link1--\n%chk=b\n" + plain},
        {"GJF-L008", "# hf/sto-3g geom=allcheck\n\n", "%oldchk=a\n# hf/sto-3g geom=allcheck\n\n"},
        {"GJF-L008", job("# hf/sto-3g guess=read"), "%chk=a\n" + job("# hf/sto-3g guess=read")},
        {"GJF-L009", "%chk=a\n" + plain + "--Link1--\n%oldchk=b\n# hf/sto-3g geom=allcheck\n\n",
         "%chk=a\n" + plain + "--Link1--\n%oldchk=a.chk\n%chk=b\n# hf/sto-3g geom=allcheck\n\n"},
        {"GJF-M001", job("# hf/sto-3g", "0 1\nQz 0.0 0.0 0.0\nH 0.0 0.0 1.0\n"),
         job("# hf/sto-3g", "0 2\nC1 0.0 0.0 0.0\nH2 0.0 0.0 1.0\n")},
        {"GJF-M001", job("# hf/sto-3g", "0 1\nJ 0.0 0.0 0.0\n"),
         job("# hf/sto-3g", "0 1\nBq 0.0 0.0 0.0\nHe-Bq 0 0 2.0\n2 0.0 0.0 5.0\n")},
        {"GJF-M002", job("# hf/sto-3g", "0 2\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n"),
         job("# hf/sto-3g", "1 2\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n")},
        {"GJF-M002", job("# hf/sto-3g", "0 5\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n"),
         job("# hf/sto-3g", "0 3\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n")},
        {"GJF-M002", job("# hf/sto-3g", "3 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n"),
         job("# uff", "0 2\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n")},
        {"GJF-M002", job("# hf/sto-3g", "0 0\nHe 0.0 0.0 0.0\n"),
         job("# hf/sto-3g", "0 1\nHe 0.0 0.0 0.0\nH-Bq 0.0 0.0 1.0\nTv 0 0 5.0\n")},
        {"GJF-M002", job("# hf/sto-3g", "0 -3\nHe 0.0 0.0 0.0\n"), job("# hf/sto-3g", "0 3\nHe 0.0 0.0 0.0\n")},
        {"GJF-M002", oniom("0 1 0 2 0 2"), oniom("0 1 0 1 0 1")},
        {"GJF-M002", oniom("0 1 0 0 0 1"), oniom("0 1 0 1 0 1")},
        {"GJF-M002", job("# hf/sto-3g counterpoise=2", "0 1 0 2 0 2\n" + dimer),
         job("# hf/sto-3g counterpoise=2", "0 1 0 1 0 1\n" + dimer)},
        {"GJF-M003", job("# hf/sto-3g", "0 1 0 1\nHe 0.0 0.0 0.0\n"), job("# hf/sto-3g", "0 1\nHe 0.0 0.0 0.0\n")},
        {"GJF-M003", job("# hf/sto-3g counterpoise=2", "0 1 0 1\n" + dimer),
         job("# hf/sto-3g counterpoise=2", "0 1\n" + dimer)},
        {"GJF-M002", oniom("0 1 0 2"), oniom("0 1 0 2", hostless_layers)},
        {"GJF-M003", oniom("0 1 0 1 0 1 0 1 0 1"), oniom("0 1")},
        {"GJF-M003", job("# hf/sto-3g", "0 1 0 1\nHe 0.0 0.0 0.0\n"), job("# hf/sto-3g", "0 1 0 1 0 1\n" + dimer)},
        {"GJF-M003", job("# hf/sto-3g counterpoise=2", "0 1 1 2 0 1\n" + dimer),
         job("# hf/sto-3g counterpoise=2", "1 2 1 2 0 1\n" + dimer)},
        {"GJF-M003", job("# hf/sto-3g counterpoise=2", "0 3 0 1 0 1\n" + dimer),
         job("# hf/sto-3g counterpoise=2", "0 1 1 2 -1 2\n" + dimer)},
        {"GJF-M003", job("# hf/sto-3g guess=(fragment=2)", "0 1 1 2 -1 2\n" + dimer),
         job("# hf/sto-3g guess=(fragment=2)", "0 1 1 2 -1 -2\n" + dimer)},
        {"GJF-M004", job("# hf/sto-3g counterpoise=2", "0 1\nHe(Fragment=1) 0.0 0.0 0.0\nHe 0.0 0.0 3.0\n"),
         job("# hf/sto-3g counterpoise=2", "0 1\nHe(fragment=1) 0.0 0.0 0.0\nHe(Fragment=2) 0.0 0.0 3.0\n")},
        {"GJF-M004", job("# hf/sto-3g counterpoise=2", "0 1\nHe(Fragment=1) 0.0 0.0 0.0\nHe(Fragment=3) 0.0 0.0 3.0\n"),
         job("# hf/sto-3g", "0 1\nHe(Fragment=1) 0.0 0.0 0.0\nHe(Fragment=3) 0.0 0.0 3.0\n")},
        {"GJF-M004", job("# hf/sto-3g counterpoise=3", "0 1\n" + dimer), job("# hf/sto-3g counterpoise=2", "0 1\n" + dimer)},
        {"GJF-M005", job("# hf/sto-3g", "0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 0.45\n"),
         job("# hf/sto-3g", "0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 0.55\n")},
        {"GJF-M005", job("# hf/sto-3g", "0 1\nHe 1.0 2.0 3.0\nHe 1.0 2.0 3.0\n"),
         job("# hf/sto-3g", "0 1\nHe 1.0 2.0 3.0\nHe-Bq 1.0 2.0 3.0\n")},
        {"GJF-M005", job("# hf/sto-3g units=au", "0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 0.9\n"),
         job("# hf/sto-3g geom=nocrowd", "0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 0.3\n")},
        {"GJF-M005", job("# hf/sto-3g", "0 1\nHe\nHe 1 r\n\nr=0.1\n"), job("# hf/sto-3g", "0 1\nHe\nHe 1 r\n\nr=1.1\n")},
        {"GJF-M005", job("# hf/sto-3g", "0 1\nH\nO 1 1.0\nO 2 1.4 1 50.0\nH 3 1.0 2 50.0 1 0.0\n"),
         job("# hf/sto-3g", "0 1\nH\nO 1 1.0\nO 2 1.4 1 50.0\nH 3 1.0 2 50.0 1 180.0\n")},
        {"GJF-M006", job("# hf/sto-3g", "0 1\nO 0.0 0.0 0.0\nH 0.0 1.43 1.11\nH 0.0 -1.43 1.11\n"),
         job("# hf/sto-3g units=au", "0 1\nO 0.0 0.0 0.0\nH 0.0 1.43 1.11\nH 0.0 -1.43 1.11\n")},
        {"GJF-M006", job("# hf/sto-3g units=au", "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n"), plain},
        {"GJF-M006", job("# hf/sto-3g", "0 1\nH 0.0 0.0 0.0\nC 0.0 0.0 2.01\nN 0.0 0.0 4.19\n"),
         job("# hf/sto-3g units=au", "0 1\nH 0.0 0.0 0.0\nC 0.0 0.0 2.01\nN 0.0 0.0 4.19\n")},
        {"GJF-M006", job("# hf/sto-3g", "0 1\nO 0.0 0.0 -2.19\nC 0.0 0.0 0.0\nO 0.0 0.0 2.19\n"),
         job("# hf/sto-3g", "0 1\nO 0.0 0.0 -1.16\nC 0.0 0.0 0.0\nO 0.0 0.0 1.16\n")},
        {"GJF-M006", job("# hf/sto-3g units=au", "0 1\nH 0.0 0.0 0.0\nC 0.0 0.0 1.06\nN 0.0 0.0 2.22\n"),
         job("# hf/sto-3g", "0 1\nH 0.0 0.0 0.0\nC 0.0 0.0 1.5\nN 0.0 0.0 3.3\n")},
        {"GJF-M007", job("# hf/sto-3g", "0 1\nH\nH 1 r\n"), job("# hf/sto-3g", "0 1\nH\nH 1 r\n\nr=0.74\n")},
        {"GJF-M008", job("# hf/sto-3g", "0 1\nH\nH 1 r\n\nr=0.74\na=104.5\n"),
         job("# hf/sto-3g", "0 1\nO\nH 1 r\nH 1 r 2 a\n\nr=0.96\na=104.5\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nO\nH 1 0.96\nH 3 0.96 2 104.5\n"),
         job("# hf/sto-3g", "0 1\nO\nH 1 0.96\nH 1 0.96 2 104.5\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nO\nH 1 0.96\nH 1 0.96 1 104.5\n"),
         job("# hf/sto-3g", "0 1\nO\nH 1 0.96\nH 2 1.5 1 40.0\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nO\nH 1 0.96\nH 1 0.96\n"), job("# hf/sto-3g", "0 1\nHe\nHe 1 3.0\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nO\nC 1 1.2\nO 2 1.2 1 180.0\nHe 3 2.0 2 90.0 1 0.0\n"),
         job("# hf/sto-3g", "0 1\nO\nC 1 1.2\nO 2 1.2 1 180.0\nHe 3 2.0 2 180.0 1 0.0\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nO\nH 1 0.96\nH 1 0.96 2 a\n\na=190.0\n"),
         job("# hf/sto-3g", "0 1\nO\nH 1 0.96\nH 1 0.96 2 a\n\na=104.5\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nO\nH 1 0.96\nH 1 0.96 2 90.0\nHe 1 2.0 2 30.0 3 30.0 1\n"),
         job("# hf/sto-3g", "0 1\nO\nH 1 0.96\nH 1 0.96 2 90.0\nHe 1 2.0 2 130.0 3 130.0 1\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nH\nH 1 r\n\nr=r\n"), job("# hf/sto-3g", "0 1\nH\nH 1 r\n\nr=0.74\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nO\nH O2 r 1 a\n\nr=0.96\na=104.5\n"),
         job("# hf/sto-3g", "0 1\nO2\nH O2 r\nH O2 r 2 a\n\nr=0.96\na=104.5\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nO\nH 1 r\nH 1 r C3 a\n\nr=0.96\na=104.5\n"),
         job("# hf/sto-3g", "0 1\nO\nH 1 r\nVariables:\nr 0.96 S3 4\n")},
        {"GJF-M009", job("# hf/sto-3g", "0 1\nH\nH 1 0.74 Q 3 4\n"), job("# hf/sto-3g", "0 1\nH\nH 1 h\n\nh 0.74 5 0.1\n")},
        {"GJF-M010", job("# hf/sto-3g", "0 1\nO\nH C7 0.96\nH C7 0.96 H 104.5\n"),
         job("# hf/sto-3g", "0 1\nO\nH 1 r\nH 1 r 2 a\n\nr 0.96\na 104.5\n")},
        {"GJF-M010", job("# hf/sto-3g", "0 1\nO1\nH2 O7 0.96\nH3 O7 0.96 H2 104.5\n"),
         job("# hf/sto-3g", "0 1\nO1\nH2 O1 0.96\nH3 O1 0.96 H2 104.5\n")},
        {"GJF-M011", oniom("0 1", "He 0.0 0.0 0.0 H\nHe 0.0 0.0 4.0\n"),
         oniom("0 1", "He 0.0 0.0 0.0 H\nHe 0.0 0.0 4.0 L\n")},
        {"GJF-M012", oniom("0 1", "He 0.0 0.0 0.0 H\nHe 0.0 0.0 4.0 Q\n"),
         oniom("0 1", "He 0.0 0.0 0.0 High\nHe 0.0 0.0 4.0 low\n")},
        {"GJF-M012", oniom("0 1", "He 0.0 0.0 0.0 H\nHe 0.0 0.0 4.0 M\n"),
         job("# oniom(hf/sto-3g:pm6:uff)", "0 1\nHe 0.0 0.0 0.0 H\nHe 0.0 0.0 4.0 M\nHe 0.0 4.0 0.0 L\n")},
        {"GJF-M013", oniom("0 1", "H 0.0 0.0 0.0 H\nH 0.0 0.0 0.74 L\n"),
         oniom("0 1", "H 0.0 0.0 0.0 H\nH 0.0 0.0 0.74 L H 1\n")},
        {"GJF-M014", oniom("0 1", "H 0.0 0.0 0.0 H\nH 0.0 0.0 0.74 L H 7\n"),
         oniom("0 1", "H 0.0 0.0 0.0 H\nH 0.0 0.0 0.74 L H-HC 1\n")},
        {"GJF-M014", oniom("0 1", "H 0.0 0.0 0.0 L H 2\nH 0.0 0.0 0.74 L H 1\n"),
         oniom("0 1", "H 0.0 0.0 0.0 L H 2\nH 0.0 0.0 0.74 H\n")},
        {"GJF-M015", job("# hf/sto-3g", "0 1\nHe 2 0.0 0.0 0.0\n"),
         job("# hf/sto-3g", "0 1\nHe -1 0.0 0.0 0.0\nHe 0 0.0 0.0 3.0\nHe -2 0.0 3.0 0.0\n")},
        {"GJF-M015", job("# hf/sto-3g opt", "0 1\nHe -1 0.0 0.0 0.0\nHe -1 0.0 0.0 3.0\n"),
         job("# hf/sto-3g opt", "0 1\nHe -1 0.0 0.0 0.0\nHe 0 0.0 0.0 3.0\n")},
        {"GJF-M015", job("# hf/sto-3g opt=tight", "0 1\nHe -1 0.0 0.0 0.0\n"),
         job("# hf/sto-3g freq", "0 1\nHe -1 0.0 0.0 0.0\n")},
        {"GJF-M015", job("# hf/sto-3g opt", "0 1\nHe -1 0.0 0.0 0.0\n"),
         job("# hf/sto-3g opt=readoptimize", "0 1\nHe -1 0.0 0.0 0.0\n", "atoms=1")},
        {"GJF-M016", periodic("Tv 5.0 0.0 0.0\nTv -2.5 0.0 0.0\n"), periodic("Tv 5.0 0.0 0.0\nTv -2.5 4.0 0.0\n")},
        {"GJF-M016", periodic("Tv 0.0 0.0 0.0\n"), periodic("Tv 0.0 0.0 5.0\n")},
        {"GJF-M016", periodic("Tv 5.0 0.0 0.0\nTv 0.0 5.0 0.0\nTv 5.0 5.0 0.0\n"),
         periodic("Tv 5.0 0.0 0.0\nTv 0.0 5.0 0.0\nTv 5.0 5.0 1.0\n")},
        {"GJF-M016", periodic("Tv 5.0 0.0 0.0\nTv 0.0 5.0 0.0\nTv 0.0 0.0 5.0\nTv 5.0 5.0 5.0\n"),
         periodic("Tv 5.0 0.0 0.0\nTv 0.0 5.0 0.0\nTv 0.0 0.0 5.0\n")},
        {"GJF-M012", oniom("0 1", "He 0.0 0.0 0.0 L\nHe 0.0 0.0 4.0 L\n"),
         oniom("0 1", "He 0.0 0.0 0.0 L\nHe 0.0 0.0 4.0 H\n")},
        {"GJF-M017", "%chk=a\n# hf/sto-3g geom=check\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n",
         "%chk=a\n# hf/sto-3g geom=check\n\nt\n\n0 1\n! He 0.0 0.0 0.0\n\n"},
        {"GJF-M017", "%chk=a\n# hf/sto-3g geom=checkpoint\n\nt\n\n0 1\nO\nH 1 0.96\n\n",
         "%chk=a\n# hf/sto-3g geom=modify\n\nt\n\n0 1\n\nr 0.96\n\n"},
        {"GJF-M018", job("# hf/sto-3g", "0 1\nHe 0.0 0.0 0.0 0.5\n"), job("# hf/sto-3g", "0 1\nHe 0 0.0 0.0 0.5\n")},
        {"GJF-M018", job("# hf/sto-3g", "0 1\nHe -1.0 0.0 0.0 0.5\n"), job("# hf/sto-3g", "0 1\nHe -1 0.0 0.0 0.5\n")},
        {"GJF-M018", job("# hf/sto-3g", "0 1\nHe 0 0.0 0.0 0.5 1.5\n"), job("# hf/sto-3g", "0 1\nHe 0 0.0 0.0 0.5 1\n")},
        {"GJF-M019", job("# hf/sto-3g opt=z-matrix"), job("# hf/sto-3g opt=z-matrix", "0 1\nH\nH 1 0.74\n")},
        {"GJF-M019", job("# hf/sto-3g opt=z-matrix"), job("# hf/sto-3g opt=z-matrix", "0 1\nHe 0.0 0.0 z\n\nz=0.0\n")},
        {"GJF-M019", job("# hf/sto-3g fopt"), job("# hf/sto-3g fopt", "0 1\nH\nH 1 r\n\nr=0.74\n")},
        {"GJF-M019", job("# hf/sto-3g popt"), job("# hf/sto-3g popt", "0 1\nO\nH 1 r\nH 1 r 2 a\n\nr=0.96\na=104.5\n")},
        {"GJF-M019",
         job("# hf/sto-3g fopt", "0 1\nO\nX 1 x\nH 1 r 2 a\nH 1 s 2 b 3 c\n\nx=1.0\nr=0.9\na=50.\ns=1.\nb=55.\nc=180.\n"),
         job("# hf/sto-3g popt", "0 1\nO\nX 1 x\nH 1 r\nH 1 s 2 a\n\nx=1.0\nr=0.9\na=90.\ns=3.\n")},
        {"GJF-M019", job("# hf/sto-3g scan"), job("# hf/sto-3g scan", "0 1\nH\nH 1 r\n\nr 0.7 4 0.1\n")},
        {"GJF-M019", job("# hf/sto-3g scan", "0 1\nH\nH 1 r\n\nr=0.74\n"),
         job("# hf/sto-3g scan", "0 1\nH\nH 1 r\n\nr=0.7 S 4 0.1\n")},
        {"GJF-M019", job("# hf/sto-3g scan", "0 1\nH\nH 1 r\n\nr=0.74 4\n"),
         job("# hf/sto-3g scan geom=modredundant", hydrogen, "B 1 2 S 4 0.1\n")},
        {"GJF-P001", job("# hf/sto-3g", "0 1\nHe 0.0 0.0 0.0x\n"), job("# hf/sto-3g", "0 1\nHe 0.0 0.0 x\n\nx=0.0\n")},
        {"GJF-P001", "", plain},
        {"GJF-P001", "# hf/sto-3g\n\ntitle\n", plain},
        {"GJF-R001", job("# hf/sto-3g opt=calfc"), job("# hf/sto-3g opt=calcfc")},
        {"GJF-R001", job("# hf/sto-3g opt=(maxcycle=50,calfc)"), job("# hf/sto-3g opt=(maxcycle=50,calcf)")},
        {"GJF-R001", job("# hf/sto-3g opt=(report=read)"), job("# hf/sto-3g irc=(calcfc,report=read)", hydrogen, "1 2\n")},
        {"GJF-R001", job("# hf/sto-3g scf=tigth"), job("# hf/sto-3g scf=tight iop(1/8=18) int=99590 field=x+10")},
        {"GJF-R001", job("# mp2=fll/sto-3g"), job("# mp2=full/sto-3g")},
        {"GJF-R002", job("# hf/sto-3g freq=raman freq=numer"), job("# hf/sto-3g pop=full pop=mk scf=qc scf=tight")},
        {"GJF-R002", job("# hf/sto-3g opt=ts opt=calcfc"), job("# hf/sto-3g opt=(ts,calcfc) iop(1/8=5) iop(1/9=6)")},
        {"GJF-R021", job("# hf/sto-3g opt=(tight,Tight)"), job("# hf/sto-3g opt=(tight,calcfc)")},
        {"GJF-R021", job("# hf/sto-3g opt=(maxcyc=5,ts,maxcycle=6,calcfc)"), job("# casscf(2,2)/sto-3g")},
        {"GJF-R021", job("# hf/sto-3g pop=(mk,mk)"), job("# hf/sto-3g pop=mk pop=full")},
        {"GJF-R021", job("# hf/sto-3g scf(tight,tight)"), job("# hf/sto-3g iop(3/76=10,3/77=10) field=x+10")},
        {"GJF-R022", job("#PM6"), job("#popt hf/sto-3g", "0 1\nH\nH 1 r\n\nr=0.74\n")},
        {"GJF-R022", job("#TD(nstates=3) hf/sto-3g"), job("#t td(nstates=3) hf/sto-3g")},
        {"GJF-R022", job("#NMR hf/sto-3g"), job("#n nmr hf/sto-3g")},
        {"GJF-R022", job("#pbepbe/sto-3g"), job("#b3lyp/sto-3g")},
        {"GJF-R022", job("#TPSSTPSS/sto-3g"), job("#P TPSSTPSS/sto-3g")},
        {"GJF-R023", job("# hf/sto-3g opt=ts,calcfc"), job("# hf/sto-3g opt=(ts,calcfc)")},
        {"GJF-R023", job("# hf/sto-3g scf=tight,qc"), job("# hf/sto-3g,scf=tight")},
        {"GJF-R023", job("# hf/sto-3g scrf=smd,solvent=water"), job("# hf/sto-3g opt=ts scrf(smd,solvent=water)")},
        {"GJF-R023", job("# hf/sto-3g opt=ts,verytight"), job("# hf/sto-3g opt=ts,freq,pop=mk")},
        {"GJF-R023", job("# hf/sto-3g pop=mk,nbo nosymm"), job("# hf/sto-3g pop=mk,nmr,sp,int=ultrafine")},
        {"GJF-R017", job("# mp2/sto-3g", "0 1\nHe 0.0 0.0 0.0\nTv 5.0 0.0 0.0\n"),
         job("# pbepbe/sto-3g", "0 1\nHe 0.0 0.0 0.0\nTv 5.0 0.0 0.0\n")},
        {"GJF-R014", job("# hf/sto-3g freq temperature=298K"), job("# hf/sto-3g freq temperature=298.15 pressure=1.0")},
        {"GJF-R003", job("# hf b3lyp/sto-3g"), job("# casscf(2,2)/sto-3g mp2")},
        {"GJF-R004", job("# hf/sto-3g 6-31g(d)"), job("# blyp/tzvp/tzvpfit")},
        {"GJF-R005", job("# opt 6-31g(d)"), job("# opt hf/6-31g(d)")},
        {"GJF-R005", job("# freq sto-3g"), "%chk=a\n" + job("# opt=restart")},
        {"GJF-R006", job("# pm6/6-31g(d)"), job("# pm6")},
        {"GJF-R006", job("# g4 6-31g(d)"), job("# b3lyp 6-31g(d)")},
        {"GJF-R006", job("# upm3/sto-3g"), job("# uhf/sto-3g")},
        {"GJF-R007", job("# b3lyp opt"), job("# b3lyp opt 6-31g")},
        {"GJF-R008", job("# hf/sto-3g opt=(ts,qst2)", hydrogen, "b\n\n" + hydrogen),
         job("# hf/sto-3g opt=(ts,calcfc)", hydrogen)},
        {"GJF-R008", job("# hf/sto-3g opt=(calcfc,calcall)"), job("# hf/sto-3g opt=(calcfc,maxcycle=20)")},
        {"GJF-R008", job("# hf/sto-3g irc=(forward,reverse,calcfc)"), job("# hf/sto-3g irc=(forward,calcfc)")},
        {"GJF-R008", job("# hf/sto-3g 5d 6d"), job("# hf/sto-3g 5d 7f")},
        {"GJF-R009", job("# hf/sto-3g irc"), job("# hf/sto-3g irc=calcfc")},
        {"GJF-R009", job("# hf/sto-3g nmr=readatoms"), job("# hf/sto-3g nmr=mixed")},
        {"GJF-R009", job("# hf/sto-3g opt=ts"), job("# hf/sto-3g opt=(ts,calcfc)")},
        {"GJF-R009", job("# hf/sto-3g td=(nstates=3,root=5)"), job("# hf/sto-3g td=(nstates=5,root=5)")},
        {"GJF-R009", job("# casscf/sto-3g"), job("# casscf(2,2)/sto-3g")},
        {"GJF-R010", job("# hf/sto-3g opt irc=calcfc"), job("# hf/sto-3g opt freq")},
        {"GJF-R010", job("# hf/sto-3g opt=(ts,calcfc) polar"), job("# hf/sto-3g opt=(ts,calcfc) polar freq")},
        {"GJF-R011", job("# pbe0/6-31g(d)"), job("# pbe1pbe/6-31g(d)")},
        {"GJF-R011", job("# upbe0 6-31g(d)"), job("# pbe0dh 6-31g(d)")},
        {"GJF-R012", job("# hf/sto-3g scrf=(solvent=watr)"), job("# hf/sto-3g scrf=(solvent=water)")},
        {"GJF-R012", job("# hf/sto-3g scrf=(smd,solvent=toluen3)"), job("# hf/sto-3g scrf=(smd,solvent=THF)")},
        {"GJF-B001", job("# b3lyp/gen", "0 3\nFe 0.0 0.0 0.0\nO 0.0 0.0 1.62\n", "Fe 0\nLANL2DZ\n****\nO 0\n6-31G\n****\n"),
         job("# b3lyp/genecp", "0 3\nFe 0.0 0.0 0.0\nO 0.0 0.0 1.62\n",
             "Fe 0\nLANL2DZ\n****\nO 0\n6-31G\n****\n\nFe 0\nLANL2DZ\n")},
        {"GJF-B002", job("# b3lyp/sdd em=gd3", "0 1\nCm 0.0 0.0 0.0\n"), job("# b3lyp/sdd em=gd3", "0 1\nPu 0.0 0.0 0.0\n")},
        {"GJF-R013", job("# hf/6-31g(d)", "0 1\nHg 0.0 0.0 0.0\n"), job("# hf/lanl2dz", "0 1\nHg 0.0 0.0 0.0\n")},
        {"GJF-R014", job("# hf/sto-3g opt=(maxstep=0.5)"), job("# hf/sto-3g opt=(maxstep=50)")},
        {"GJF-R015", job("# hf/sto-3g opt=(maxcycles)"), job("# hf/sto-3g opt=(maxcycles=50)")},
        {"GJF-R017", job("# ccsd/sto-3g opt=calcfc"), job("# ccsd/sto-3g opt")},
        {"GJF-R017", job("# ccsd(t)/sto-3g opt"), job("# mp2/sto-3g opt")},
        {"GJF-R018", job("# ccsd/sto-3g freq"), job("# mp2/sto-3g freq")},
        {"GJF-R019", job("# b3p86/sto-3g em=gd3"), job("# b3lyp/sto-3g em=gd3")},
        {"GJF-R020", job("# b3lyp/sto-3g guess=mix"), job("# ub3lyp/sto-3g guess=mix")},
        {"GJF-R016", job("# hf/sto-3g opt=(calcfc=1)"), job("# hf/sto-3g opt=(calcfc,saddle=1)")},
        {"GJF-S001", job("# hf/gen"), with_basis(gen)},
        {"GJF-S001", job("# hf/sto-3g geom=connectivity"), bonds("1 2 1.0 3 1.0\n2\n3\n")},
        {"GJF-S001", job("# hf/sto-3g opt=modredundant"), changes("B 1 2 F\n")},
        {"GJF-S001", job("# hf/genecp", hydrogen, "H 0\n6-31G\n****\n"), job("# hf/genecp", hydrogen, "@both.gbs\n")},
        {"GJF-S001", job("# hf/genecp", hydrogen, "H 0\n6-31G\n****\n"),
         job("# hf/genecp", hydrogen, "H 0\n6-31G\n****\n\n")},
        {"GJF-S001", job("# hf/genecp scrf=read", hydrogen, "H 0\n6-31G\n****\n\n"),
         job("# hf/genecp scrf=read", hydrogen, "H 0\n6-31G\n****\n\n@rest\n")},
        {"GJF-S001", job("# uhf/sto-3g guess=alter"), job("# uhf/sto-3g guess=alter", hydrogen, "1 2\n")},
        {"GJF-S001", job("# hf/sto-3g scrf=read"), job("# hf/sto-3g scrf=read") + "\n"},
        {"GJF-S002", job("# hf/sto-3g pop=nboread", hydrogen, "$NBO $END\n\nleft over\n"),
         job("# hf/sto-3g pop=nboread", hydrogen, "$NBO $END\n\n$CHOOSE 1 $END\n")},
        {"GJF-S002", job("# hf/sto-3g", hydrogen, "$CHOOSE 1 $END\n"), job("# hf/sto-3g", hydrogen, "! $CHOOSE\n")},
        {"GJF-S002", job("# hf/sto-3g", hydrogen, "1 2 1.0\n2\n"),
         job("# hf/sto-3g geom=connectivity", hydrogen, "1 2 1.0\n2\n")},
        {"GJF-S002", job("# hf/sto-3g", hydrogen, "left over\n"), job("# hf/sto-3g", hydrogen, "! left over\n")},
        {"GJF-S003", bonds("1 2 1.0 1 1.0\n2\n3\n"), bonds("1 2 1.0 3 1.0\n2\n3\n")},
        {"GJF-S004", bonds("1 2 1.0\n2 1 2.0\n3\n"), bonds("1 2 1.0\n2 1 1.0\n3\n")},
        {"GJF-S004", bonds("1 2 1.0 2 1.0\n2\n3\n"), bonds("1 2 1.0\n2 3 1.0\n3\n")},
        {"GJF-S005", bonds("1 2 1.0 3 1.0\n2\n"), bonds("1 2 1.0 3 1.0\n2\n3\n")},
        {"GJF-S005", bonds("1 2 1.0\n1 3 1.0\n2\n3\n"), bonds("1 2 1.0 3 1.0\n3\n2\n")},
        {"GJF-P001", bonds("1 2 1.0 3 1.0\n2\n3\n4\n"), bonds("1 2 1.0 3 1.0\n2\n3\n")},
        {"GJF-S006", bonds("1 2 1.0 3 1.0\n2 1 1.0\n3\n"), bonds("1 2 1.0 3 1.0\n2 1 1.0\n3 1 1.0\n")},
        {"GJF-S007", with_basis("O 0\n6-31G(d)\n****\n"), with_basis("1 0\n6-31G(d)\n****\n2-3 0\nsto-3g\n****\n")},
        {"GJF-S007", with_basis("O C 0\n6-31G(d)\n****\n"), with_basis("@mybasis.gbs\n")},
        {"GJF-S008", with_basis("O H 0\nsto-3g\n****\nH 0\n6-31G\n****\n"),
         with_basis("O H 0\nsto-3g\n****\nH 0\nP 1 1.0\n1.1 1.0\n****\n")},
        {"GJF-S009", with_basis("O H 0\n6-31H(d)\n****\n"), with_basis("O H 0\n6-31G(d)\n****\n")},
        {"GJF-S009", with_basis("O H 0\ndef2-tzvp\n****\n"), with_basis("O H 0\ndef2tzvp\n****\n")},
        {"GJF-S010", with_basis("O 0\n6-31G(d)\nH 0\n6-31G\n****\n"), with_basis(gen)},
        {"GJF-S010", with_basis("O H 0\n6-31G\n"), with_basis("O H 0\n6-31G\n****\n")},
        {"GJF-S011", with_basis("O H Fe 0\n6-31G\n****\n"), with_basis("O H -Fe 0\n6-31G\n****\n")},
        {"GJF-S011", with_basis("1-4 0\n6-31G\n****\n"), with_basis("1-3 0\n6-31G\n****\n")},
        {"GJF-S011", with_basis("3-1 0\n6-31G\n****\n"), with_basis("3-3 1-2 0\n6-31G\n****\n")},
        {"GJF-S011", with_basis("0-3 0\n6-31G\n****\n"), with_basis("-1-3 0\n6-31G\n****\n")},
        {"GJF-S011", with_basis("oxygen 0\n6-31G\n****\n"), with_basis("O H 0\n6-31G\n****\n")},
        {"GJF-S012", job("# hf/genecp", hydrogen, "H 0\n6-31G\n****\n\nFe 0\nlanl2dz\n"),
         job("# hf/genecp", hydrogen, "H 0\n6-31G\n****\n\n-Fe 0\nlanl2dz\n")},
        {"GJF-S013", changes("Q 1 2 F\n"), changes("B 1 2 F\n* 2 F\n1 2 3 B\n")},
        {"GJF-S014", changes("A 1 2 F\n"), changes("A 1 2 3 F\nB 1 2 S 10 0.1\nA 1 2 3 120 F\n")},
        {"GJF-S015", changes("B 1 7 F\n"), changes("B 1 6 F\n")},
        {"GJF-S015", changes("D 0 1 2 3 F\n"), changes("D * 1 2 * F\n")},
        {"GJF-S016", job("# hf/sto-3g pop=nboread", hydrogen, "$NBO PLOT\n"),
         job("# hf/sto-3g pop=nboread", hydrogen, "$NBO PLOT $END\n")},
        {"GJF-S017", job("# hf/sto-3g scrf=(read,solvent=water)", hydrogen, "epz=10.0\n"),
         job("# hf/sto-3g scrf=(read,solvent=water)", hydrogen, "eps=10.0\nRadii=UFF\n")},
        {"GJF-S018", job("# hf/sto-3g charge", hydrogen, "0.0 0.0 5.0\n"),
         job("# hf/sto-3g charge", hydrogen, "0.0 0.0 5.0 0.5\n")},
        {"GJF-S018", job("# hf/sto-3g charge", hydrogen, "0.0 0.0 five 1.0\n"),
         job("# hf/sto-3g charge", hydrogen, "0.0 0.0 5.0D+00 1.0\n")},
        {"GJF-S019", qst("0 1\nHe 0.0 0.0 0.0\n"), qst("0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.8\n")},
        {"GJF-S020", qst("0 1\nH 0.0 0.0 0.0\nHe 0.0 0.0 0.8\n"), qst("0 1\nH 0.0 0.0 0.0\n1 0.0 0.0 0.8\n")},
        {"GJF-S021", qst("0 1\nH 0.0 0.0 0.0x\n"), qst("0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.8\n")},
        {"GJF-S022", changes("B 1 2 W\n"), changes("B 1 2 1.5 F\nB 1 2 += 0.1 B\nB 1 2 =1.4 A\nD 3 1 2 4 H 0.5\n")},
        {"GJF-S022", changes("B 1 2 S 10\n"), changes("B 1 2 S 10 0.1\n* * * K\nB 1 * R\nA 1 2 3 D 0.5\n")},
        {"GJF-S022", changes("B 1 2 S 0.1 10\n"), changes("B 1 2 s 10 -0.1\nX 1 F\n")},
        {"GJF-S022", changes("B 1 2 Freeze\n"), changes("B 1 2 f\n1 2 B\n")},
        {"GJF-S023", changes("B 1 1 F\n"), changes("B 1 2 1 F\nB 1 2 S 2 1.0\n")},
        {"GJF-S023", changes("A 1 2 01 F\n"), changes("A 1 2 3 1 F\nA * 2 * F\n")},
        {"GJF-S023", changes("D 1 2 3 2 F\n"), changes("D 1 2 3 4 2 F\nD * 2 3 * F\n")},
        {"GJF-S023", changes("D 1 2 3 1 F\n"), changes("O 1 2 3 4 F\nX 1 1 F\n")},
        {"GJF-S023", changes("L 1 3 3 F\n"), changes("L 1 2 3 1 F\n")},
        {"GJF-S023", changes("2 2 F\n"), changes("1 2 2 F\n* * K\n2 F\n")},
        {"GJF-S024", with_basis("O H 0\nS 2 1.0\n1.0 0.5\n****\n"),
         with_basis("O H 0\nS 2 1.0\n1.0 0.5\n2.0D0 0.5\n****\n")},
        {"GJF-S024", with_basis("O H 0\nS 2 1.0\n1.0 0.5\nP 1 1.0\n1.0 1.0\n****\n"),
         with_basis("O H 0\nS 1 1.0\n! narrow\n 1.0 0.5 ! one\n\tP 1 1.0\n1.0 1.0\n****\n")},
        {"GJF-S024", with_basis("O 0\nSP 3 1.0\n1.0 0.5 0.5\n.5 0.5 0.5\nH 0\nsto-3g\n****\n"),
         with_basis("O H 0\nsto 1s 3 7.66\n6-31G\n****\n")},
        {"GJF-S024", with_basis("O H 0\nS 2 1.0\n1.0 0.5\n"), with_basis("O H 0\nS 2 1.0\n@primitives\n****\n")},
        {"GJF-S025", job("# hf/sto-3g freq=readisotopes", hydrogen, "298.15 1.0\n2\n"),
         job("# hf/sto-3g freq=readisotopes", hydrogen, "298.15 1.0\n2 ! D\n1\n")},
        {"GJF-S025", job("# hf/sto-3g freq=readisotopes", hydrogen, "298.15 1.0\n"),
         job("# hf/sto-3g freq=readisotopes", hydrogen, "298.15 1.0\n@masses\n")},
        {"GJF-S025", job("# hf/sto-3g freq=readisotopes", hydrogen, "298.15 1.0\n1 ! 1\n! 2\n"),
         job("# hf/sto-3g freq=readisotopes", "0 1\nX 0 0 9\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n", "298.15 1.0\n2 2\n")},
        {"GJF-S026", job("# hf/genecp", hydrogen, "H 0\nsdd\n\nH 0\n6-31G\n****\n"),
         job("# hf/genecp", hydrogen, "H 0\n6-31G\n****\n\nH 0\nsdd\n")},
        {"GJF-S026", job("# hf/genecp", hydrogen, "-H 0\nsdd\n\n1-2 0\n6-31G\n****\n"),
         job("# hf/genecp", hydrogen, "@basis\n\n-H 0\nsdd\n****\n")},
        {"GJF-S027", job("# hf/sto-3g freq=readisotopes", hydrogen, "300K 1atm\n2\n2\n"),
         job("# hf/sto-3g freq=readisotopes", hydrogen, "300.0 1.0 0.96\n2\n2\n")},
        {"GJF-S027", job("# hf/sto-3g freq=readisotopes", hydrogen, "2\n2\n"),
         job("# hf/sto-3g freq=readisotopes", hydrogen, "298.15,1.0D0\n2\n2\n")},
        {"GJF-S028", with_basis("O H 0\nSP 1 1.0\n1.0 0.5\n****\n"), with_basis("O H 0\nSP 1 1.0\n1.0 0.5 0.5\n****\n")},
        {"GJF-S028", with_basis("O H 0\nS 1 1.0\n1.0 0.5 0.5\n****\n"), with_basis("O H 0\nS 1 1.0\n1.0 0.5 ! 0.5\n****\n")},
        {"GJF-S028", with_basis("O H 0\nS 1 1.0\n-1.0 0.5\n****\n"), with_basis("O H 0\nS 1 1.0\n+1.0 -0.5\n****\n")},
        {"GJF-S028", with_basis("O H 0\nS 1 1.0\n1.0 O.5\n****\n"), with_basis("O H 0\nS 1 1.0\n1.0D+00 .5d0\n****\n")},
        {"GJF-S028", with_basis("O H 0\nS 1 1.0\n1.0 0.5\n2.0 0.5\n****\n"),
         with_basis("O H 0\nS 2 1.0\n1.0 0.5\n2.0 0.5\n****\n")},
        {"GJF-S028", with_basis("O H 0\n****\n"), with_basis("O H 0\nsto-3g\n****\n")},
        {"GJF-S014", gics("A(1,2)"), gics("A(1,2,3)")},
        {"GJF-S014", gics("turn(freeze)=Dihedral(1,2,3)"), gics("f(value=1.5)=R(1,2)+R(2,3)")},
        {"GJF-S015", gics("R(1,7)"), gics("R(1,6)")},
        {"GJF-S023", gics("d = R(1,2) - R(3,3)"), gics("C1=XCntr(1,1)")},
        {"GJF-S022", gics("B 1 2 F"), gics("B12(Freeze)=B(1,2)")},
        {"GJF-T007", gics("R(1,2"), gics("f=(R(1,2)+R(2,3))/2")},
        {"GJF-S022", changes("D 1 2 3 4 F 115.0\n"), changes("D 1 2 3 4 115.0 F\n")},
        {"GJF-S017", job("# hf/sto-3g scrf=read", hydrogen, "eps=seventy\n"),
         job("# hf/sto-3g scrf=read", hydrogen, "eps=7.0D1\nradii=uff\n")},
        {"GJF-M002", qst("0 2\nH 0.0 0.0 0.0\nH 0.0 0.0 0.8\n"), qst("0 3\nH 0.0 0.0 0.0\nH 0.0 0.0 0.8\n")},
        {"GJF-T001", "# hf/sto-3g\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n", "# hf/sto-3g\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T001", "# hf/sto-3g\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0", plain},
        {"GJF-T002", job("# hf/sto-3g opt\x01"), job("# hf/sto-3g\topt")},
        {"GJF-T003", job("# hf/sto-3g opt=\xE2\x80\x93"),
         "# hf/sto-3g ! \xC3\xA9\n\nt\xC3\xA9tle\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T004", "# hf/sto-3g\r\n\r\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n",
         "# hf/sto-3g\r\n\r\ntitle\r\n\r\n0 1\r\nHe 0.0 0.0 0.0\r\n\r\n"},
        {"GJF-T005", "# hf/sto-3g\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n--Link1--\n" + plain, plain + "--Link1--\n" + plain},
        {"GJF-T006", job("# hf/sto-3g", "0 1\nHe 0.0 0.0 1.O\n"), job("# hf/sto-3g", "0 1\nHe 0.0 0.0 1.0\n")},
        {"GJF-T006", job("# hf/sto-3g", "0 1\nHe 0,123 0,456 0,789\n"), job("# hf/sto-3g", "0 1\nHe,0.123,0.456,0.789\n")},
        {"GJF-T006", job("# hf/sto-3g", "0 1\nH\nH 1 r\n\nr=0,74\n"), job("# hf/sto-3g", "0 1\nH\nH 1 r\n\nr=1 4 0.1\n")},
        {"GJF-T006", job("# hf/sto-3g", "0 1\nH\nH 1 r\n\nr=0.7l\n"), job("# hf/sto-3g", "0 1\nH\nH 1 r\n\nr=7.4D-01\n")},
        {"GJF-T007", job("# hf/sto-3g opt=(calcfc"), job("# hf/sto-3g opt=(calcfc)")},
        {"GJF-T007", job("# hf/sto-3g opt=calcfc)"), job("# hf/sto-3g external='run (x'")},
        {"GJF-T007", job("# hf/sto-3g external='run"), job("# hf/sto-3g external='run'")},
        {"GJF-T008", "\xEF\xBB\xBF" + plain, plain},
        {"GJF-T009", "# hf/sto-3g\n\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n", plain},
        {"GJF-T009", "# hf/sto-3g\n\n\n\n0 1\nHe 0.0 0.0 0.0\n\n", "# hf/sto-3g\n\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T009", "# hf/sto-3g\n\ntitle\n\n\n0 1\nHe 0.0 0.0 0.0\n\n",
         "# hf/sto-3g\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n\n\n"},
        {"GJF-T009", job("# hf/sto-3g", "0 1\nH\nH 1 r\n\n\nr=0.74\n"), job("# hf/sto-3g", "0 1\nH\nH 1 r\n\nr=0.74\n")},
        {"GJF-T009", changes("\nB 1 2 F\n"), changes("B 1 2 F\n")},
        {"GJF-T009", job("# hf/genecp", hydrogen, "H 0\n6-31G\n****\n\n\n-Fe 0\nsdd\n"),
         job("# hf/genecp", hydrogen, "H 0\n6-31G\n****\n\n-Fe 0\nsdd\n")},
        {"GJF-T009", job("# uhf/sto-3g scrf=read", hydrogen, "\neps=4.0\n"),
         job("# hf/genecp guess=alter", hydrogen, "H 0\n6-31G\n****\n\n\n1 2\n")},
        {"GJF-T009", "%chk=a\n# hf/sto-3g geom=check\n\n\ntitle\n\n0 1\n\n",
         "%chk=a\n# hf/sto-3g geom=check\n\ntitle\n\n0 1\n\n\n"},
        {"GJF-T009", job("# hf/sto-3g opt=qst2", hydrogen, "\nsecond\n\n" + hydrogen),
         job("# hf/sto-3g pop=nboread", hydrogen, "\n$NBO $END\n")},
        {"GJF-T010", "# hf/sto-3g opt\n\nfreq\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n",
         "# hf/sto-3g opt\n\nopt freq\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T010", "# hf/sto-3g opt=(calcfc,\n\ntight)\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n",
         "# hf/sto-3g opt=(calcfc,\ntight)\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T010", "# hf/sto-3g\n\nscf=(xqc,tight) int=ultrafine\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n",
         "# hf/sto-3g\n\nsome title\n\nanother\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T011", "%chk=a\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n", "%chk=a\n\n#\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T012", "# hf/sto-3g\n\na\nb\nc\nd\ne\nf\n\n0 1\nHe 0.0 0.0 0.0\n\n",
         "# hf/sto-3g\n\na\nb\nc\nd\ne\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T011", "%chk=a\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n", "@job.inc\n\n"},
        {"GJF-T013", job("# hf/sto-3g", "0 1\nH\nH 1 r\nr=0.74\n"),
         job("# hf/sto-3g", "0 1\nH\nH 1 r\nVariables:\nr=0.74\n")},
        {"GJF-T013", job("# hf/sto-3g", "0 1\nH\nH 1 r ! far\n! away\nr=0.74\n"),
         job("# hf/sto-3g", "0 1\nH\nH 1 r\n Constants\nr=0.74\n")},
        {"GJF-W001", job("# hf/sto-3g po"), job("# hf/sto-3g pol")},
        {"GJF-W002", job("# b3 sto-3g"), job("# b3lyp sto-3g")},
        {"GJF-W003", job("# hf/6-3"), job("# hf/6-31g")},
        {"GJF-W004", job("# hf/sto-3g opt=no"), job("# hf/sto-3g opt=nofreeze")},
        {"GJF-W005", job("# bl3yp/6-31g(d)"), job("# b3lyp/6-31g(d)")},
        {"GJF-W005", job("# hf/def2-tzvp"), job("# hf/def2tzvp")},
        {"GJF-W005", job("# hf/sto-3g optt=calcfc"), job("# hf/sto-3g opt=calcfc")},
        {"GJF-W005", job("# hf/6-31g(q)"), job("# hf/6-31g(d)")},
        {"GJF-W005", job("# m06-2x/sto-3g"), job("# m062x/sto-3g")},
    };
    return table;
}

std::set<std::string> codes_of(const std::string& text) {
    std::set<std::string> codes;
    for (const Finding& finding : check_text(text)) {
        codes.insert(finding.code);
    }
    return codes;
}

}  // namespace

TEST(CheckPairs, RaiseTheirCode) {
    for (const Pair& pair : pairs()) {
        EXPECT_EQ(codes_of(pair.raises).count(pair.code), 1U) << pair.code << " in\n" << pair.raises;
    }
}

TEST(CheckPairs, AreQuietForTheNearText) {
    for (const Pair& pair : pairs()) {
        EXPECT_EQ(codes_of(pair.near).count(pair.code), 0U) << pair.code << " in\n" << pair.near;
    }
}
