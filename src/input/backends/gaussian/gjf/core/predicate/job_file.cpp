// The fields of a job, one row each.
#include <gjf/core/predicate/job_file.hpp>

#include <gjf/core/check/checker.hpp>
#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/job/memory_amount.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/route/option_syntax.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <map>
#include <utility>

namespace quor::input::gaussian {
namespace {

FieldValue unknown() { return {false, {}, std::nullopt}; }

FieldValue number(double value, std::string text) { return {true, {std::move(text)}, value}; }

template <typename Integer>
FieldValue integer(Integer value) {
    return number(static_cast<double>(value), std::to_string(value));
}

template <typename Integer>
FieldValue integer_if_known(const std::optional<Integer>& value) {
    return value ? integer(*value) : unknown();
}

// What is empty is not there.
FieldValue texts(std::vector<std::string> values) {
    values.erase(std::remove(values.begin(), values.end(), std::string()), values.end());
    return {true, std::move(values), std::nullopt};
}

const GJFData& data_of(const JobFile& file, std::size_t job) { return file.whole(job).job; }

// --- The molecule

// Returns the species of all that the molecule has; nothing where it stands in a checkpoint or was not read.
std::optional<std::vector<Species>> species_in(const JobFile& file, std::size_t job) {
    const GeomSection& geom = data_of(file, job).geom;
    if (geom.atom_count() == 0 || file.whole(job).atoms_uncertain) {
        return std::nullopt;
    }
    std::vector<Species> found;
    for (const AtomCoord& atom : geom.atoms) {
        found.push_back(species_of(atom.info));
    }
    for (const ZMatrixEntry& row : geom.zmatrix_entries) {
        found.push_back(species_of(row.info));
    }
    return found;
}

FieldValue atoms_of(const JobFile& file, std::size_t job) {
    const auto species = species_in(file, job);
    const auto counts = [](const Species& s) {
        return s.kind != SpeciesKind::Dummy && s.kind != SpeciesKind::TranslationVector;
    };
    return species ? integer(std::count_if(species->begin(), species->end(), counts)) : unknown();
}

// As Hill writes it: carbon, hydrogen, then all else by the alphabet, which begins with neither where there is no carbon.
FieldValue formula_of(const JobFile& file, std::size_t job) {
    const auto species = species_in(file, job);
    std::map<std::pair<int, std::string>, std::size_t> counts;
    for (const Species& s : species.value_or(std::vector<Species>{Species{}})) {
        if (s.kind == SpeciesKind::Unknown) {
            return unknown();
        }
        if (s.kind == SpeciesKind::Atom) {
            ++counts[{s.element == 6 ? 0 : s.element == 1 ? 1 : 2, element_symbol(s.element)}];
        }
    }
    const bool has_carbon = !counts.empty() && counts.begin()->first.first == 0;
    if (const auto hydrogen = counts.find({1, "H"}); !has_carbon && hydrogen != counts.end()) {
        counts[{2, "H"}] = hydrogen->second;
        counts.erase(hydrogen);
    }
    std::string text;
    for (const auto& [element, count] : counts) {
        text += element.second + (count == 1 ? std::string() : std::to_string(count));
    }
    return texts({text});
}

FieldValue pair_value(const JobFile& file, std::size_t job, std::int32_t ChargeSpinPair::*member) {
    const std::vector<ChargeSpinPair> pairs = data_of(file, job).geom.charge_spin_pairs();
    return pairs.empty() ? unknown() : integer(pairs.front().*member);
}

FieldValue charge_of(const JobFile& file, std::size_t job) { return pair_value(file, job, &ChargeSpinPair::charge); }

FieldValue multiplicity_of(const JobFile& file, std::size_t job) {
    return pair_value(file, job, &ChargeSpinPair::multiplicity);
}

// --- The route

// Methods or basis sets: of both halves of a model chemistry, or of all levels of an ONIOM calculation.
FieldValue chemistry_of(const JobFile& file, std::size_t job, std::string ParsedKeywords::*first,
                        std::string ParsedKeywords::*second) {
    const std::optional<ParsedKeywords>& route = data_of(file, job).control.parsed_keywords;
    if (!route) {
        return unknown();
    }
    std::vector<std::string> names = {(*route).*first, (*route).*second};
    for (const std::string& level : oniom_levels(route->oniom_expression)) {
        names.push_back(read_route(level, default_route_schema()).meaning.*first);
    }
    return texts(std::move(names));
}

FieldValue method_of(const JobFile& file, std::size_t job) {
    return chemistry_of(file, job, &ParsedKeywords::method, &ParsedKeywords::secondary_method);
}

FieldValue basis_of(const JobFile& file, std::size_t job) {
    return chemistry_of(file, job, &ParsedKeywords::basis_set, &ParsedKeywords::secondary_basis_set);
}

// --- Link 0, title and sections

FieldValue title_of(const JobFile& file, std::size_t job) {
    const GJFData& data = data_of(file, job);
    return data.title.empty() && GJFParser::is_geom_allchk(data.control) ? unknown() : texts({data.title});
}

FieldValue chk_of(const JobFile& file, std::size_t job) { return texts({data_of(file, job).control.chk.value_or("")}); }

FieldValue oldchk_of(const JobFile& file, std::size_t job) {
    return texts({find_link0_value(data_of(file, job).control, *find_link0_key("oldchk")).value_or("")});
}

FieldValue mem_of(const JobFile& file, std::size_t job) {
    const std::optional<std::string>& text = data_of(file, job).control.mem;
    const std::optional<MemoryAmount> memory = text ? read_memory_amount(*text) : std::nullopt;
    if (!memory || memory->unit == 0) {
        return texts({text.value_or("")});
    }
    return number(static_cast<double>(memory->amount) * static_cast<double>(memory->unit), *text);
}

FieldValue nproc_of(const JobFile& file, std::size_t job) {
    const std::optional<std::string> count = find_link0_value(data_of(file, job).control, *find_link0_key("nproc"));
    return count ? integer(std::stoi(*count)) : texts({});
}

FieldValue section_of(const JobFile& file, std::size_t job) {
    std::vector<std::string> names;
    for (const ExtraInputSection& section : data_of(file, job).extra_inputs) {
        names.emplace_back(extra_input_short_name(section.kind));
    }
    return texts(std::move(names));
}

FieldValue missing_of(const JobFile& file, std::size_t job) {
    std::vector<std::string> names;
    for (const ExtraInputSectionKind kind : file.whole(job).layout.missing) {
        names.emplace_back(extra_input_short_name(kind));
    }
    return texts(std::move(names));
}

// --- What is found, and sizes

// What is found in the file as a whole concerns all its jobs.
template <typename Take>
void for_findings(const JobFile& file, std::size_t job, Take take) {
    for (const Finding& finding : file.findings()) {
        if (finding.job == 0 || finding.job == file.jobs()[job].layout.number) {
            take(finding);
        }
    }
}

void add_once(std::vector<std::string>& names, std::string name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        names.push_back(std::move(name));
    }
}

FieldValue code_of(const JobFile& file, std::size_t job) {
    std::vector<std::string> codes;
    for_findings(file, job, [&](const Finding& finding) { add_once(codes, finding.code); });
    return texts(std::move(codes));
}

FieldValue severity_of(const JobFile& file, std::size_t job) {
    std::vector<std::string> names;
    for_findings(file, job, [&](const Finding& finding) { add_once(names, severity_name(finding.severity)); });
    return texts(std::move(names));
}

FieldValue verdict_of(const JobFile& file, std::size_t job) {
    std::optional<Severity> worst;
    for_findings(file, job,
                 [&](const Finding& finding) { worst = std::max(worst, std::optional<Severity>(finding.severity)); });
    return texts({worst ? severity_name(*worst) : "clean"});
}

FieldValue electrons_of(const JobFile& file, std::size_t job) { return integer_if_known(file.size(job).electrons); }
FieldValue functions_of(const JobFile& file, std::size_t job) { return integer_if_known(file.size(job).functions); }
FieldValue file_of(const JobFile& file, std::size_t) { return texts({file.path()}); }
FieldValue jobs_of(const JobFile& file, std::size_t) { return integer(file.jobs().size()); }
FieldValue number_of(const JobFile& file, std::size_t job) { return integer(file.jobs()[job].layout.number); }

using ValueOf = FieldValue (*)(const JobFile& file, std::size_t job);

struct Row {
    JobField field;
    ValueOf value;
};

constexpr Row rows[] = {
    {{"file", FieldForm::Text, "the path of the file"}, file_of},
    {{"jobs", FieldForm::Number, "how many jobs the file has"}, jobs_of},
    {{"job", FieldForm::Number, "the job's number in its file"}, number_of},
    {{"atoms", FieldForm::Number, "atoms and ghosts, without dummies and translation vectors"}, atoms_of},
    {{"charge", FieldForm::Number, "the charge"}, charge_of},
    {{"multiplicity", FieldForm::Number, "the multiplicity"}, multiplicity_of},
    {{"method", FieldForm::Method, "the method, of ONIOM those of all levels"}, method_of},
    {{"basis", FieldForm::Basis, "the basis set, of ONIOM those of all levels"}, basis_of},
    {{"formula", FieldForm::Formula, "the formula in Hill's order, as C2H6O"}, formula_of},
    {{"title", FieldForm::Text, "the title"}, title_of},
    {{"chk", FieldForm::Text, "the value of %chk"}, chk_of},
    {{"oldchk", FieldForm::Text, "the value of %oldchk"}, oldchk_of},
    {{"mem", FieldForm::Memory, "the value of %mem"}, mem_of},
    {{"nproc", FieldForm::Number, "the value of %nprocshared"}, nproc_of},
    {{"section", FieldForm::Section, "the kinds of section behind the molecule"}, section_of},
    {{"missing", FieldForm::Section, "the kinds of section that the route asks for and the job lacks"}, missing_of},
    {{"code", FieldForm::Code, "the codes of what check finds"}, code_of},
    {{"severity", FieldForm::Severity, "the severities of what check finds"}, severity_of},
    {{"electrons", FieldForm::Number, "the electrons, without those of core potentials"}, electrons_of},
    {{"functions", FieldForm::Number, "the basis functions"}, functions_of},
    {{"verdict", FieldForm::Text, "the worst severity that check finds, or clean"}, verdict_of},
};

}  // namespace

JobFile::JobFile(std::string path, std::string text, NamedFiles files)
    : path_(std::move(path)),
      text_(std::move(text)),
      jobs_(read_jobs_with_layout(text_)),
      whole_(jobs_.size()),
      sizes_(jobs_.size()) {
    if (files == NamedFiles::Opened && path_ != "-") {
        included_ = read_included_files(text_, path_);
    }
    for (std::size_t job = 0; job < (included_.empty() ? 0 : jobs_.size()); ++job) {
        std::optional<JobReading> whole = read_with_included_files(text_, jobs_[job], included_);
        whole_[job] = whole && whole->error.empty() ? std::move(whole) : std::nullopt;
    }
}

JobFile::~JobFile() = default;

const std::vector<Finding>& JobFile::findings() const {
    if (!findings_) {
        CheckOptions options;
        options.path = included_.empty() ? std::string() : path_;
        findings_ = check_text(text_, options);
    }
    return *findings_;
}

const JobSize& JobFile::size(std::size_t job) const {
    std::optional<JobSize>& size = sizes_[job];
    if (!size) {
        size = job_size(whole(job).job);
    }
    return *size;
}

const std::vector<JobField>& job_fields() {
    static const std::vector<JobField> fields = [] {
        std::vector<JobField> all;
        for (const Row& row : rows) {
            all.push_back(row.field);
        }
        return all;
    }();
    return fields;
}

const JobField* find_job_field(std::string_view name) {
    const auto row = std::find_if(std::begin(rows), std::end(rows),
                                  [&](const Row& each) { return equals_folded(name, each.field.name); });
    return row == std::end(rows) ? nullptr : &row->field;
}

FieldValue field_value(const JobFile& file, std::size_t job, const JobField& field) {
    const auto row = std::find_if(std::begin(rows), std::end(rows),
                                  [&](const Row& each) { return std::string_view(each.field.name) == field.name; });
    return row == std::end(rows) ? unknown() : row->value(file, job);
}

}  // namespace quor::input::gaussian
