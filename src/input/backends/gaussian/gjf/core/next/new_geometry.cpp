// Matches the atoms of job and output, and writes their positions field by field.
#include <gjf/core/next/new_geometry.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/job/positions.hpp>
#include <gjf/core/next/zmatrix_values.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <stdexcept>

namespace quor::input::gaussian {
namespace {

std::vector<Species> species_in(const GJFData& job) {
    std::vector<Species> species;
    if (job.geom.format == GeometryFormat::ZMatrix) {
        for (const ZMatrixEntry& row : job.geom.zmatrix_entries) {
            species.push_back(species_of(row.info));
        }
    } else {
        for (const AtomCoord& atom : job.geom.atoms) {
            species.push_back(species_of(atom.info));
        }
    }
    return species;
}

std::string name_of(const OutputAtom& atom) {
    constexpr const char* others[] = {"a ghost", "a dummy atom", "a translation vector"};
    return atom.number > 0 ? element_symbol(atom.number) : others[atom.number < -2 ? 1 : -atom.number];
}

std::string name_of(const Species& species) {
    return species.kind == SpeciesKind::Unknown ? "not known" : std::string(symbol_of(species));
}

bool is_same(const Species& species, int number) {
    switch (species.kind) {
        case SpeciesKind::Atom:
            return number == species.element || (!species.certain && number > 0);
        case SpeciesKind::Ghost:
            return number == 0;
        case SpeciesKind::Dummy:
            return number == -1;
        case SpeciesKind::TranslationVector:
            return number == -2;
        default:
            return number > 0;
    }
}

// The place in the output of each atom of the job; dummy atoms, which some tables leave out, may have none.
std::vector<const OutputAtom*> matched(const std::vector<Species>& species, const OutputGeometry& geometry) {
    std::vector<const OutputAtom*> places;
    std::size_t next = 0;
    for (std::size_t i = 0; i < species.size(); ++i) {
        const OutputAtom* const atom = next < geometry.atoms.size() ? &geometry.atoms[next] : nullptr;
        if (atom != nullptr && is_same(species[i], atom->number)) {
            places.push_back(atom);
            ++next;
        } else if (species[i].kind == SpeciesKind::Dummy) {
            places.push_back(nullptr);
        } else {
            const std::string number = std::to_string(i + 1);
            throw std::runtime_error(
                atom == nullptr
                    ? "the job has an atom " + number + ", the output has " + std::to_string(geometry.atoms.size())
                    : "atom " + number + " is " + name_of(species[i]) + " in the job and " + name_of(*atom) +
                          " in the output (line " + std::to_string(geometry.line) + ")");
        }
    }
    if (next < geometry.atoms.size()) {
        throw std::runtime_error("the output has " + std::to_string(geometry.atoms.size()) + " atoms, the job " +
                                 std::to_string(next));
    }
    return places;
}

// What a turn of the molecule would make another job of.
void check_frame(const JobReading& reading, const std::vector<Species>& species) {
    const auto refuse = [](const std::string& what) {
        throw std::runtime_error("the output has the standard orientation alone, and " + what +
                                 " holds in that of the input");
    };
    const RouteTree& route = reading.layout.route;
    for (const RouteTree::Segment& segment : route.segments) {
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            if (keyword.name == "charge" || keyword.name == "field") {
                refuse(std::string(keyword.head.in(route.text)));
            }
        }
    }
    const auto is_vector = [](const Species& each) { return each.kind == SpeciesKind::TranslationVector; };
    if (std::any_of(species.begin(), species.end(), is_vector)) {
        refuse("a translation vector");
    }
}

std::vector<std::array<double, 3>> cartesian_positions(const JobReading& reading,
                                                       const std::vector<const OutputAtom*>& places,
                                                       const OutputGeometry& geometry) {
    const double unit = length_unit(reading.job);
    std::vector<std::array<double, 3>> result;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const AtomCoord& old = reading.job.geom.atoms[i];
        if (places[i] == nullptr && geometry.frame != OutputFrame::Input) {
            throw std::runtime_error("the output does not tell where the dummy atom " + std::to_string(i + 1) + " is");
        }
        std::array<double, 3> position{old.x, old.y, old.z};
        for (std::size_t axis = 0; axis < 3 && places[i] != nullptr; ++axis) {
            position[axis] = places[i]->position[axis] / unit;
        }
        result.push_back(position);
    }
    return result;
}

bool stands_there(const GJFData& job, const std::vector<std::array<double, 3>>& wanted) {
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const AtomCoord& atom = job.geom.atoms[i];
        const bool is_number = atom.x_ref.value && atom.y_ref.value && atom.z_ref.value;
        if (!is_number || std::abs(atom.x - wanted[i][0]) > 5e-7 || std::abs(atom.y - wanted[i][1]) > 5e-7 ||
            std::abs(atom.z - wanted[i][2]) > 5e-7) {
            return false;
        }
    }
    return true;
}

std::string coordinate_text(const std::array<double, 3>& position) {
    char text[96];
    std::snprintf(text, sizeof text, "%14.8f%14.8f%14.8f", position[0], position[1], position[2]);
    return text;
}

std::string padded(std::string label) {
    label.resize(std::max<std::size_t>(label.size() + 1, 4), ' ');
    return ' ' + label;
}

// The rows of a Z-matrix as lines of Cartesian coordinates; dummy atoms go.
std::string cartesian_text(const std::string& text, const JobReading& reading,
                           const std::vector<const OutputAtom*>& places) {
    const double unit = length_unit(reading.job);
    std::string lines;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const RowFields row = row_fields(text, reading.places.zmatrix_rows[i]);
        if (!row.rest.empty()) {
            throw std::runtime_error("row " + std::to_string(i + 1) + " of the Z-matrix says more than a position");
        }
        if (species_of(reading.job.geom.zmatrix_entries[i].info).kind == SpeciesKind::Dummy) {
            if (!reading.job.extra_inputs.empty()) {
                throw std::runtime_error("without the dummy atom " + std::to_string(i + 1) +
                                         " the sections would name other atoms");
            }
            continue;
        }
        std::array<double, 3> position = places[i]->position;
        std::transform(position.begin(), position.end(), position.begin(), [&](double each) { return each / unit; });
        lines += (lines.empty() ? "" : "\n") + padded(std::string(row.label.in(text))) + coordinate_text(position);
    }
    return lines;
}

}  // namespace

std::string atom_lines(const OutputGeometry& geometry, const std::vector<std::string>& labels) {
    std::string lines;
    for (std::size_t i = 0; i < geometry.atoms.size(); ++i) {
        lines += (lines.empty() ? "" : "\n") + padded(labels[i]) + coordinate_text(geometry.atoms[i].position);
    }
    return lines;
}

std::string with_geometry(const std::string& text, const NewGeometry& wanted) {
    const std::vector<JobReading> readings = read_jobs_with_layout(text);
    const JobReading& reading = readings.at(0);
    const std::vector<Species> species = species_in(reading.job);
    const std::vector<const OutputAtom*> places = matched(species, wanted.geometry);
    if (wanted.geometry.frame == OutputFrame::Standard) {
        check_frame(reading, species);
    }
    if (reading.job.geom.format == GeometryFormat::Cartesian) {
        const std::vector<std::array<double, 3>> positions = cartesian_positions(reading, places, wanted.geometry);
        if (stands_there(reading.job, positions)) {
            return text;
        }
        GJFDocument document(text);
        document.job(0).set_positions(positions);
        return document.to_text();
    }
    if (!wanted.cartesian) {
        return with_zmatrix_values(text, reading, places);
    }
    const Span molecule = reading.places.molecule;
    return with_edits(text, {{molecule.begin, molecule.end(), cartesian_text(text, reading, places)}});
}

}  // namespace quor::input::gaussian
