// The job an editor owns: its data, route cache, title, charge and Link 0 values.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gjf/core/editor/bond_checks.hpp>
#include <gjf/core/reader/gjf_parser.hpp>

#include <numeric>
#include <utility>

namespace quor::input::gaussian {

GJFEditor::GJFEditor(GJFData data) : data_(std::move(data)), atom_origins_(data_.geom.atoms.size()) {
    check_bonds(data_);
    std::iota(atom_origins_.begin(), atom_origins_.end(), std::size_t{0});
}
GJFEditor::GJFEditor(const GJFEditor&) = default;
GJFEditor::GJFEditor(GJFEditor&&) noexcept = default;
GJFEditor& GJFEditor::operator=(const GJFEditor&) = default;
GJFEditor& GJFEditor::operator=(GJFEditor&&) noexcept = default;
GJFEditor::~GJFEditor() = default;

const GJFData& GJFEditor::get_data() const noexcept { return data_; }

void GJFEditor::set_data(GJFData data) {
    check_bonds(data);
    if (data.geom.atoms.size() != data_.geom.atoms.size()) {
        atom_origins_ = std::vector<std::size_t>(data.geom.atoms.size(), no_origin);
    }
    data_ = std::move(data);
}

void GJFEditor::set_data(GJFData data, std::vector<std::size_t> atom_origins) {
    check_bonds(data);
    if (atom_origins.size() != data.geom.atoms.size()) {
        throw GJFParseException("There must be one origin for each atom");
    }
    data_ = std::move(data);
    atom_origins_ = std::move(atom_origins);
}

void GJFEditor::parse_keywords(const std::string& schema_path) {
    if (!data_.control.route_keywords.empty()) {
        data_.control.parsed_keywords = GJFParser::parse_keywords(data_.control.route_keywords, schema_path);
    }
}

bool GJFEditor::has_parsed_keywords() const noexcept { return data_.control.parsed_keywords.has_value(); }

void GJFEditor::ensure_parsed_keywords() {
    if (has_parsed_keywords()) {
        return;
    }
    const std::vector<std::string>& route = data_.control.route_keywords;
    data_.control.parsed_keywords = route.empty() ? ParsedKeywords() : GJFParser::parse_keywords(route, {});
}

const ParsedKeywords& GJFEditor::get_parsed_keywords() const {
    if (!has_parsed_keywords()) {
        throw GJFParseException("Keywords have not been parsed yet. Call parse_keywords() first.");
    }
    return *data_.control.parsed_keywords;
}

void GJFEditor::set_parsed_keywords(ParsedKeywords keywords) { data_.control.parsed_keywords = std::move(keywords); }

void GJFEditor::set_route_section(const std::vector<std::string>& route_keywords) {
    std::vector<std::string> copy = route_keywords;
    data_.control.route_keywords = std::move(copy);
    data_.control.parsed_keywords.reset();
}

void GJFEditor::set_title(const std::string& title) { data_.title = title; }

void GJFEditor::set_charge_and_spin(int charge, int multiplicity) {
    data_.geom.charge = charge;
    data_.geom.multiplicity = multiplicity;
}

void GJFEditor::set_charge_spin_pairs(const std::vector<ChargeSpinPair>& pairs) { data_.geom.set_charge_spin_pairs(pairs); }

std::vector<ChargeSpinPair> GJFEditor::get_charge_spin_pairs() const {
    const GeomSection& geom = data_.geom;
    std::vector<ChargeSpinPair> pairs;
    pairs.reserve(geom.additional_pairs.size() + 1);
    pairs.push_back({geom.charge, geom.multiplicity});
    pairs.insert(pairs.end(), geom.additional_pairs.begin(), geom.additional_pairs.end());
    return pairs;
}

void GJFEditor::set_checkpoint_file(const std::string& path) { data_.control.chk = path; }

void GJFEditor::set_oldchk_file(const std::string& path) { data_.control.oldchk = path; }
void GJFEditor::remove_oldchk_file() { data_.control.oldchk.reset(); }
std::optional<std::string> GJFEditor::get_oldchk_file() const { return data_.control.oldchk; }

void GJFEditor::set_rwf_file(const std::string& path) { data_.control.rwf = path; }
void GJFEditor::remove_rwf_file() { data_.control.rwf.reset(); }
std::optional<std::string> GJFEditor::get_rwf_file() const { return data_.control.rwf; }

void GJFEditor::set_mem(const std::string& memory) { data_.control.mem = memory; }
void GJFEditor::remove_mem() { data_.control.mem.reset(); }
std::optional<std::string> GJFEditor::get_mem() const { return data_.control.mem; }

void GJFEditor::set_nproc(int count) { data_.control.nproc = count; }
void GJFEditor::remove_nproc() { data_.control.nproc.reset(); }
std::optional<int> GJFEditor::get_nproc() const { return data_.control.nproc; }

void GJFEditor::set_cpu(const std::string& processors) { data_.control.cpu = processors; }
void GJFEditor::remove_cpu() { data_.control.cpu.reset(); }
std::optional<std::string> GJFEditor::get_cpu() const { return data_.control.cpu; }

}  // namespace quor::input::gaussian
