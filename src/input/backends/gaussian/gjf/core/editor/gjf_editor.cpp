// The job an editor owns: its data, route cache, title, charge and Link 0 values.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gjf/core/editor/bond_checks.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <atomic>
#include <new>
#include <numeric>
#include <string_view>
#include <utility>
#include <variant>

namespace quor::input::gaussian {

namespace {

const std::string* text_of(const ExtraInputSection& section) noexcept { return std::get_if<std::string>(&section.content); }

}  // namespace

GJFEditor::GJFEditor(GJFData data) : data_(std::move(data)) {
    settle_bonds(data_);
    check_bonds(data_);
    take_as_origin();
}
GJFEditor::GJFEditor(const GJFEditor&) = default;
GJFEditor::GJFEditor(GJFEditor&&) noexcept = default;
GJFEditor& GJFEditor::operator=(const GJFEditor&) = default;
GJFEditor& GJFEditor::operator=(GJFEditor&&) noexcept = default;
GJFEditor::~GJFEditor() = default;

const GJFData& GJFEditor::get_data() const noexcept { return data_; }

// Lets origins and numberings tell of the job as it is now.
void GJFEditor::take_as_origin() {
    std::vector<std::size_t> origins(data_.geom.atoms.size());
    std::iota(origins.begin(), origins.end(), std::size_t{0});
    section_numberings_ = std::vector<SectionNumbering>(data_.extra_inputs.size());
    taken_atoms_ = origins.size();
    atom_origins_ = std::move(origins);
}

std::uint64_t GJFEditor::begin_record() {
    static std::atomic<std::uint64_t> last{0};
    take_as_origin();
    return record_.emplace(++last, taken_atoms_).identity();
}

const EditRecord* GJFEditor::record() const noexcept { return record_ ? &*record_ : nullptr; }

// Keeps what a part holds, before it changes.
void GJFEditor::touch(JobPart part) {
    if (record_) {
        record_->keep(part, data_);
    }
}

void GJFEditor::touch_atom(std::size_t index) {
    if (record_) {
        record_->keep_atom(atom_origins_[index], data_.geom.atoms[index]);
    }
}

AtomCoord& GJFEditor::atom_to_change(std::size_t index) {
    touch_atom(index);
    return data_.geom.atoms[index];
}

// Indices past the end are passed over.
void GJFEditor::touch_atoms(const std::vector<std::size_t>& indices) {
    for (const std::size_t index : indices) {
        if (index < atom_origins_.size()) {
            touch_atom(index);
        }
    }
}

void GJFEditor::touch_all_atoms() {
    for (std::size_t i = 0; record_ && i < atom_origins_.size(); ++i) {
        touch_atom(i);
    }
}

// Atoms come, go or change places, which texts that name them will follow.
void GJFEditor::touch_atom_list() {
    touch(JobPart::AtomCount);
    touch(JobPart::ExtraInput);
}

const std::vector<GJFEditor::SectionNumbering>& GJFEditor::section_numberings() const noexcept {
    return section_numberings_;
}

void GJFEditor::set_data(GJFData data) {
    const std::size_t count = data.geom.atoms.size();
    std::vector<std::size_t> origins =
        count == atom_origins_.size() ? atom_origins_ : std::vector<std::size_t>(count, no_origin);
    set_data(std::move(data), std::move(origins));
}

void GJFEditor::set_data(GJFData data, std::vector<std::size_t> atom_origins) {
    std::vector<SectionNumbering> numberings = numberings_of(data, atom_origins);
    set_data(std::move(data), std::move(atom_origins), std::move(numberings));
}

void GJFEditor::set_data(GJFData data, std::vector<std::size_t> atom_origins,
                         std::vector<SectionNumbering> section_numberings) {
    if (atom_origins.size() != data.geom.atoms.size()) {
        throw GJFParseException("There must be one origin for each atom");
    }
    if (section_numberings.size() != data.extra_inputs.size()) {
        throw GJFParseException("There must be one numbering for each section");
    }
    settle_bonds(data);
    check_bonds(data);
    record_.reset();
    data_ = std::move(data);
    atom_origins_ = std::move(atom_origins);
    section_numberings_ = std::move(section_numberings);
}

GJFEditor::SectionNumbering GJFEditor::numbering_of(const std::vector<std::size_t>& atom_origins) const {
    bool as_taken = atom_origins.size() == taken_atoms_;
    for (std::size_t i = 0; i < atom_origins.size() && as_taken; ++i) {
        as_taken = atom_origins[i] == i;
    }
    return as_taken ? SectionNumbering() : SectionNumbering{std::make_shared<const std::vector<std::size_t>>(atom_origins)};
}

// Texts that stay count what they counted; others are new.
std::vector<GJFEditor::SectionNumbering> GJFEditor::numberings_of(const GJFData& data,
                                                                  const std::vector<std::size_t>& atom_origins) const {
    std::map<std::pair<ExtraInputSectionKind, std::string_view>, const SectionNumbering*> known;
    for (std::size_t i = 0; i < data_.extra_inputs.size(); ++i) {
        if (const std::string* text = text_of(data_.extra_inputs[i])) {
            known.try_emplace({data_.extra_inputs[i].kind, *text}, &section_numberings_[i]);
        }
    }
    const SectionNumbering now = numbering_of(atom_origins);
    std::vector<SectionNumbering> numberings;
    numberings.reserve(data.extra_inputs.size());
    for (const ExtraInputSection& section : data.extra_inputs) {
        const std::string* text = text_of(section);
        const auto found = text == nullptr ? known.end() : known.find({section.kind, *text});
        numberings.push_back(found == known.end() ? now : *found->second);
    }
    return numberings;
}

void GJFEditor::parse_keywords(const std::string& schema_path) {
    if (!data_.control.route_keywords.empty()) {
        touch(JobPart::Route);
        data_.control.parsed_keywords = GJFParser::parse_keywords(data_.control.route_keywords, schema_path);
    }
}

bool GJFEditor::has_parsed_keywords() const noexcept { return data_.control.parsed_keywords.has_value(); }

void GJFEditor::ensure_parsed_keywords() {
    if (has_parsed_keywords()) {
        return;
    }
    touch(JobPart::Route);
    const std::vector<std::string>& route = data_.control.route_keywords;
    data_.control.parsed_keywords = route.empty() ? ParsedKeywords() : GJFParser::parse_keywords(route, {});
}

const ParsedKeywords& GJFEditor::get_parsed_keywords() const {
    if (!has_parsed_keywords()) {
        throw GJFParseException("Keywords have not been parsed yet. Call parse_keywords() first.");
    }
    return *data_.control.parsed_keywords;
}

void GJFEditor::set_parsed_keywords(ParsedKeywords keywords) {
    touch(JobPart::Route);
    data_.control.parsed_keywords = std::move(keywords);
}

void GJFEditor::set_route_section(const std::vector<std::string>& route_keywords) {
    install_control(route_keywords, std::nullopt);
}

void GJFEditor::install_control(std::vector<std::string> words, std::optional<ParsedKeywords> route) {
    ControlSection control;
    control.route_keywords = std::move(words);
    control.parsed_keywords = std::move(route);
    check_route_for_bonds(data_, control);
    touch(JobPart::Route);
    data_.control.route_keywords = std::move(control.route_keywords);
    data_.control.parsed_keywords = std::move(control.parsed_keywords);
}

void GJFEditor::set_title(const std::string& title) {
    touch(JobPart::Title);
    data_.title = title;
}

void GJFEditor::set_overlays(const std::optional<std::string>& text) {
    touch(JobPart::Overlays);
    data_.extra_overlays = text;
}

void GJFEditor::set_charge_and_spin(int charge, int multiplicity) {
    touch(JobPart::ChargeAndMultiplicity);
    data_.geom.charge = charge;
    data_.geom.multiplicity = multiplicity;
}

void GJFEditor::set_charge_spin_pairs(const std::vector<ChargeSpinPair>& pairs) {
    touch(JobPart::ChargeAndMultiplicity);
    data_.geom.set_charge_spin_pairs(pairs);
}

std::vector<ChargeSpinPair> GJFEditor::get_charge_spin_pairs() const {
    const GeomSection& geom = data_.geom;
    std::vector<ChargeSpinPair> pairs;
    pairs.reserve(geom.additional_pairs.size() + 1);
    pairs.push_back({geom.charge, geom.multiplicity});
    pairs.insert(pairs.end(), geom.additional_pairs.begin(), geom.additional_pairs.end());
    return pairs;
}

// The Link 0 values, which are about to change.
ControlSection& GJFEditor::link0() {
    touch(JobPart::Link0);
    return data_.control;
}

void GJFEditor::set_checkpoint_file(const std::string& path) { link0().chk = path; }
void GJFEditor::remove_checkpoint_file() { link0().chk.reset(); }

void GJFEditor::set_oldchk_file(const std::string& path) { set_link0(*find_link0_key("oldchk"), path); }
void GJFEditor::remove_oldchk_file() { unset_link0(*find_link0_key("oldchk")); }
std::optional<std::string> GJFEditor::get_oldchk_file() const { return data_.control.oldchk; }

void GJFEditor::set_rwf_file(const std::string& path) { link0().rwf = path; }
void GJFEditor::remove_rwf_file() { link0().rwf.reset(); }
std::optional<std::string> GJFEditor::get_rwf_file() const { return data_.control.rwf; }

void GJFEditor::set_mem(const std::string& memory) { link0().mem = memory; }
void GJFEditor::remove_mem() { link0().mem.reset(); }
std::optional<std::string> GJFEditor::get_mem() const { return data_.control.mem; }

void GJFEditor::set_nproc(int count) {
    remove_nproc();
    data_.control.nproc = count;
}
void GJFEditor::remove_nproc() { unset_link0(*find_link0_key("nproc")); }
std::optional<int> GJFEditor::get_nproc() const { return data_.control.nproc; }

void GJFEditor::set_cpu(const std::string& processors) { link0().cpu = processors; }
void GJFEditor::remove_cpu() { link0().cpu.reset(); }
std::optional<std::string> GJFEditor::get_cpu() const { return data_.control.cpu; }

void GJFEditor::set_link0(const Link0Key& key, const std::string& value) { gaussian::set_link0(link0(), key, value); }
void GJFEditor::unset_link0(const Link0Key& key) { gaussian::unset_link0(link0(), key); }

void GJFEditor::set_other_link0_lines(const std::vector<std::string>& lines) {
    std::vector<std::string> copy = lines;
    link0().other_link0_lines = std::move(copy);
}

}  // namespace quor::input::gaussian
