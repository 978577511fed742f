// Writes molecules as XYZ.
#include <gjf/core/report/xyz.hpp>

#include <gjf/core/job/positions.hpp>
#include <gjf/core/text/number_writing.hpp>

#include <algorithm>
#include <array>
#include <vector>

namespace quor::input::gaussian {
namespace {

std::string padded_left(const std::string& text, std::size_t width) {
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

std::string atom_line(const AtomPosition& atom) {
    std::string line(symbol_of(atom.species));
    line.resize(std::max<std::size_t>(line.size(), 2), ' ');
    for (const double x : *atom.position) {
        line += ' ' + padded_left(fixed_text(x, 8), 15);
    }
    return line + '\n';
}

std::string title_line(const GJFData& job, const std::vector<Position>& vectors) {
    std::string line;
    if (vectors.size() == 3) {
        for (const Position& vector : vectors) {
            for (const double x : vector) {
                line += (line.empty() ? "Lattice=\"" : " ") + fixed_text(x, 8);
            }
        }
        line += "\" Properties=species:S:1:pos:R:3";
    }
    line += (line.empty() || job.title.empty() ? "" : " ") + job.title;
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return line + '\n';
}

}  // namespace

XyzText xyz_text(const GJFData& job) {
    XyzText result;
    std::vector<Position> vectors;
    std::string lines;
    std::size_t count = 0;
    const std::vector<AtomPosition> atoms = positions(job);
    for (std::size_t i = 0; i < atoms.size() && result.problem.empty(); ++i) {
        const AtomPosition& atom = atoms[i];
        if (!atom.position) {
            result.problem = position_fault_text(atom, i + 1);
        } else if (atom.species.kind == SpeciesKind::Unknown) {
            result.problem = "atom " + std::to_string(i + 1) + " is no element";
        } else if (atom.species.kind == SpeciesKind::TranslationVector) {
            vectors.push_back(*atom.position);
        } else if (atom.species.kind == SpeciesKind::Atom) {
            lines += atom_line(atom);
            ++count;
        } else {
            ++(atom.species.kind == SpeciesKind::Ghost ? result.ghosts : result.dummies);
        }
    }
    result.vectors = vectors.size() == 3 ? 0 : vectors.size();
    if (atoms.empty()) {
        result.problem = "there are no atoms: the molecule stands in a checkpoint";
    }
    if (result.problem.empty()) {
        result.text = std::to_string(count) + '\n' + title_line(job, vectors) + lines;
    }
    return result;
}

}  // namespace quor::input::gaussian
