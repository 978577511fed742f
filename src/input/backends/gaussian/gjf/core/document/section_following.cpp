// Follows the atoms of a job through the texts of its sections, from what each text counts to the atoms as they are now.
#include <gjf/core/document/section_following.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/sections/section_kinds.hpp>

#include <algorithm>
#include <string>

namespace quor::input::gaussian {
namespace {

// The change of the atoms since a section's text was given, from that since the job was taken.
AtomPlaces places_since(const std::vector<std::size_t>& origins_then, const AtomPlaces& since_taken) {
    AtomPlaces places;
    places.count = since_taken.count;
    places.added = since_taken.count > origins_then.size();
    for (std::size_t i = 0; i < origins_then.size(); ++i) {
        const std::size_t origin = origins_then[i];
        places.places.push_back(origin < since_taken.old_count() ? since_taken.places[origin] : AtomPlaces::gone);
        places.renumbered = places.renumbered || places.places.back() != i;
    }
    return places;
}

// Brings the atom numbers of a section's text up to date; refuses where it is not known which atoms they count.
std::string followed_text(const ExtraInputSection& section, const GJFEditor::SectionNumbering& numbering,
                          const AtomPlaces& places, const std::vector<std::size_t>& origins, bool force) {
    std::string text = section.text();
    const auto refuse_if_changed = [&](const AtomPlaces& change, const char* reason) {
        bool changed = false;
        try {
            changed = !force && renumber_section(section.kind, text, change, false) != text;
        } catch (const GJFParseException&) {
            changed = true;
        }
        if (changed) {
            throw GJFParseException(std::string("The section '") + extra_input_kind_name(section.kind) +
                                    "' cannot follow the change of atoms: " + reason);
        }
        return text;
    };
    if (numbering.mixed) {
        return refuse_if_changed(places, "it was added to after the atoms had changed");
    }
    if (numbering.origins == nullptr) {
        const bool lost = places.count > 0 && std::all_of(places.places.begin(), places.places.end(),
                                                          [](std::size_t place) { return place == AtomPlaces::gone; });
        return lost ? refuse_if_changed(places, "where they went is not known")
                    : renumber_section(section.kind, text, places, force);
    }
    if (*numbering.origins == origins) {
        return text;
    }
    const AtomPlaces change = places_since(*numbering.origins, places);
    const bool traced = std::count(numbering.origins->begin(), numbering.origins->end(), GJFEditor::no_origin) == 0;
    return traced ? renumber_section(section.kind, text, change, force)
                  : refuse_if_changed(change, "it may name an atom that was added before");
}

}  // namespace

AtomPlaces places_of(std::size_t old_count, const std::vector<std::size_t>& origins) {
    AtomPlaces places;
    places.count = origins.size();
    places.places.assign(old_count, AtomPlaces::gone);
    for (std::size_t i = 0; i < origins.size(); ++i) {
        if (origins[i] < old_count) {
            places.places[origins[i]] = i;
        } else {
            places.added = true;
        }
    }
    for (std::size_t i = 0; i < old_count; ++i) {
        places.renumbered = places.renumbered || places.places[i] != i;
    }
    return places;
}

std::vector<ExtraInputSection> sections_to_write(const GJFEditor& editor, const AtomPlaces& places, bool force) {
    std::vector<ExtraInputSection> wanted = editor.get_data().extra_inputs;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i].connectivity() == nullptr) {
            wanted[i].content =
                followed_text(wanted[i], editor.section_numberings()[i], places, editor.atom_origins(), force);
        }
    }
    // A section whose lines all went with their atoms goes too, unless another one would then be read in its place.
    const auto is_left_empty = [](const ExtraInputSection& section) {
        return section.connectivity() == nullptr && section.text().empty();
    };
    while (!wanted.empty() && is_left_empty(wanted.back())) {
        wanted.pop_back();
    }
    const auto empty = std::find_if(wanted.begin(), wanted.end(), is_left_empty);
    if (empty != wanted.end()) {
        throw GJFParseException(std::string("All that the section '") + extra_input_kind_name(empty->kind) +
                                "' names is removed; remove it and its keyword first");
    }
    return wanted;
}

}  // namespace quor::input::gaussian
