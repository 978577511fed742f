// Jobs and routes as JSON.
#include <gjf/core/basis/job_estimate.hpp>
#include <gjf/core/basis/job_size.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/report/json_values.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

template <typename Value>
void set_if_there(Json& object, const char* key, const std::optional<Value>& value) {
    if (value) {
        object[key] = *value;
    }
}

Json json_of_label(const AtomInfo& info) {
    Json object = {{"element", info.element}};
    set_if_there(object, "mm_type", info.mm_type);
    set_if_there(object, "mm_charge", info.mm_charge);
    for (const auto& [key, value] : info.params) {
        object["parameters"][key] = value;
    }
    return object;
}

// A coordinate that is a variable is given by its name.
Json json_of_coordinate(const CoordinateValue& coordinate, double value) {
    return coordinate.value || coordinate.text.empty() ? Json(value) : Json(coordinate.text);
}

Json json_of_atom(const AtomCoord& atom) {
    Json object = json_of_label(atom.info);
    set_if_there(object, "freeze", atom.freeze);
    object["x"] = json_of_coordinate(atom.x_ref, atom.x);
    object["y"] = json_of_coordinate(atom.y_ref, atom.y);
    object["z"] = json_of_coordinate(atom.z_ref, atom.z);
    set_if_there(object, "layer", atom.layer);
    return object;
}

Json json_of_row(const ZMatrixEntry& row) {
    Json object = json_of_label(row.info);
    const auto set = [&](const char* key, const std::optional<ZMatrixReference>& reference) {
        if (reference) {
            object[key] = {{"atom", reference->atom}, {"value", reference->value}};
        }
    };
    set("bond", row.bond);
    set("angle", row.angle);
    set("dihedral", row.dihedral);
    return object;
}

template <typename Item, typename ToJson>
void set_list(Json& object, const char* key, const std::vector<Item>& items, ToJson to_json) {
    if (!items.empty()) {
        object[key] = list_of(items, to_json);
    }
}

Json json_of_variable(const ZMatrixVariable& variable) { return {{"name", variable.name}, {"value", variable.value}}; }

Json json_of_molecule(const GeomSection& geom) {
    Json object;
    object["charges"] = list_of(geom.charge_spin_pairs(), [](const ChargeSpinPair& pair) -> Json {
        return {{"charge", pair.charge}, {"multiplicity", pair.multiplicity}};
    });
    object["format"] = geom.format == GeometryFormat::ZMatrix ? "zmatrix" : "cartesian";
    set_list(object, "atoms", geom.atoms, json_of_atom);
    set_list(object, "rows", geom.zmatrix_entries, json_of_row);
    set_list(object, "variables", geom.variables, json_of_variable);
    set_list(object, "constants", geom.constants, json_of_variable);
    set_list(object, "cartesian_variables", geom.cartesian_variables, json_of_variable);
    return object;
}

Json json_of_section(const ExtraInputSection& section) {
    Json object = json_of_kind(section.kind);
    if (const ConnectivitySection* connectivity = section.connectivity()) {
        object["bonds"] = list_of(connectivity->bonds, [](const Bond& bond) -> Json {
            return {bond.atom1 + 1, bond.atom2 + 1, bond.order};
        });
    } else {
        object["text"] = section.text();
    }
    return object;
}

Json json_of_link0(const ControlSection& control) {
    Json object = Json::object();
    for (const char* name : {"chk", "oldchk", "rwf", "mem", "nproc", "cpu"}) {
        const Link0Key& key = *find_link0_key(name);
        if (const std::optional<std::string> value = find_link0_value(control, key)) {
            object[name] = key.form == Link0Form::Count ? Json(std::stoi(*value)) : Json(*value);
        }
    }
    if (!control.other_link0_lines.empty()) {
        object["other"] = control.other_link0_lines;
    }
    return object;
}

Json json_of_keyword(const KeywordInfo& keyword) {
    Json object = {{"name", keyword.name}, {"category", keyword.category}, {"written", keyword.raw}};
    object["options"] = Json::array();
    for (const auto& [name, value] : keyword.options) {
        Json option = {{"name", name}};
        if (value != "TRUE" && !value.empty()) {
            option["value"] = value;
        }
        object["options"].push_back(std::move(option));
    }
    return object;
}

Json json_of_warning(const ParseWarning& warning) {
    Json object = {{"code", warning.code}, {"message", warning.message}};
    if (warning.span) {
        object["begin"] = warning.span->begin;
        object["end"] = warning.span->end;
    }
    return object;
}

Json json_of_route(const ParsedKeywords& route) {
    Json object = Json::object();
    set_text(object, "print_level", route.print_level);
    set_text(object, "method", route.method);
    set_text(object, "method_options", route.method_options);
    set_text(object, "basis_set", route.basis_set);
    set_text(object, "density_fitting_basis", route.density_fitting_basis);
    set_text(object, "secondary_method", route.secondary_method);
    set_text(object, "secondary_method_options", route.secondary_method_options);
    set_text(object, "secondary_basis_set", route.secondary_basis_set);
    set_text(object, "oniom", route.oniom_expression);
    object["keywords"] = list_of(route.keywords, json_of_keyword);
    object["warnings"] = list_of(route.warnings, json_of_warning);
    return object;
}

// Adds the numbers of functions and electrons, and why one of them is not known.
void set_size(Json& object, const JobSize& size) {
    set_if_there(object, "functions", size.functions);
    if (size.doubtful) {
        object["functions_doubtful"] = true;
    }
    set_if_there(object, "electrons", size.electrons);
    if (size.core_electrons != 0) {
        object["core_electrons"] = size.core_electrons;
    }
    if (!size.no_functions.empty()) {
        object["unknown"]["functions"] = size.no_functions;
    }
    if (!size.no_electrons.empty()) {
        object["unknown"]["electrons"] = size.no_electrons;
    }
}

void set_least(Json& object, const char* key, const LeastBytes& least) {
    set_if_there(object, key, least.bytes);
    if (least.bytes) {
        object["by"][key] = least.formula + " words";
    } else {
        object["unknown"][key] = least.unknown;
    }
}

Json json_of_estimate(const JobEstimate& estimate) {
    Json object = Json::object();
    set_least(object, "mem_bytes", estimate.memory);
    set_least(object, "disk_bytes", estimate.disk);
    set_text(object, "cost", estimate.cost);
    if (estimate.cost.empty()) {
        object["unknown"]["cost"] = estimate.unknown_cost;
    }
    return object;
}

Json json_of_job(const GJFData& job) {
    Json object;
    object["link0"] = json_of_link0(job.control);
    object["route_words"] = job.control.route_keywords;
    if (job.control.parsed_keywords) {
        object["route"] = json_of_route(*job.control.parsed_keywords);
    }
    set_if_there(object, "overlays", job.extra_overlays);
    object["title"] = job.title;
    object["molecule"] = json_of_molecule(job.geom);
    object["sections"] = list_of(job.extra_inputs, json_of_section);
    const JobSize size = job_size(job);
    set_size(object, size);
    object["estimate"] = json_of_estimate(estimate_job(job, size));
    return object;
}

Json json_of_job_or_fault(const JobReading& reading) {
    return reading.error.empty() ? json_of_job(reading.job)
                                 : Json{{"error", {{"line", reading.error_line}, {"message", reading.error}}}};
}

Json json_of_file(const IncludedFile& file) {
    Json object = {{"line", file.line}, {"name", file.name}};
    if (const std::string problem = find_problem(file); !problem.empty()) {
        object["problem"] = problem;
    } else {
        object["text"] = with_included_files(file.text, file.files);
    }
    return object;
}

}  // namespace

std::string job_json(const GJFData& job) { return json_text(json_of_job(job)); }

std::string report_json(const std::string& path, const std::vector<GJFData>& jobs) {
    Json object = about_file(path);
    object["jobs"] = list_of(jobs, json_of_job);
    return json_line(object);
}

std::string readings_json(const std::string& path, const std::vector<JobReading>& readings) {
    Json object = about_file(path);
    object["jobs"] = list_of(readings, json_of_job_or_fault);
    return json_line(object);
}

std::string readings_json(const JobFile& file, const std::vector<std::size_t>& jobs) {
    Json object = about_file(file.path());
    object["jobs"] = list_of(jobs, [&](std::size_t number) {
        const JobReading& reading = file.jobs()[number];
        Json job = json_of_job_or_fault(reading);
        if (reading.error.empty()) {
            set_list(job, "included", files_of_job(file.included(), reading), json_of_file);
        }
        if (const JobReading& whole = file.whole(number); &whole != &reading) {
            job["whole"] = json_of_job(whole.job);
        }
        return job;
    });
    return json_line(object);
}

std::string route_json(const std::string& text, const ParsedKeywords& route,
                       const std::vector<ExtraInputSectionKind>& sections, const std::vector<Finding>& findings) {
    Json object = versioned();
    object["text"] = text;
    object["route"] = json_of_route(route);
    object["sections"] = list_of(sections, json_of_kind);
    object["findings"] = list_of(findings, json_of_finding);
    return json_line(object);
}

}  // namespace quor::input::gaussian
