// General basis sets: blocks of centers with shells, or the name of a set, each ended by stars.
#include <gjf/core/sections/centers.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {
namespace {

// Returns how many lines of primitives the line of a shell, as "SP 3 1.00", has behind it; 0 for any other line.
std::int64_t primitives_of(const SectionScanner& scan) {
    constexpr std::int64_t most = 1000;
    const auto of_type = [](char c) { return is_digit(c) || c == '=' || c == 'l' || c == 'L' || is_shell_letter(c); };
    if (scan.size() < 2 || !std::all_of(scan.field(0).begin(), scan.field(0).end(), of_type)) {
        return 0;
    }
    const std::int64_t count = to_int64(scan.field(1)).value_or(0);
    return count >= 1 && count <= most ? count : 0;
}

// Shells that the program itself expands in Gaussians, as "STO 1S 3 7.66".
bool is_slater_shell(const SectionScanner& scan) {
    return equals_folded(scan.field(0), "sto") &&
           std::any_of(scan.fields().begin(), scan.fields().end(),
                       [](std::string_view field) { return field.find('.') != std::string_view::npos; });
}

// Tells a symbol, perhaps with a "-" before it.
bool is_element(std::string_view field) noexcept {
    const std::string_view name = field.front() == '-' ? field.substr(1) : field;
    return atomic_number(name) != 0 || equals_folded(name, "bq");
}

// Walks blocks: centers, then a body up to the stars. Where the stars are missing, the next line of centers opens a block.
class BasisBlocks {
   public:
    explicit BasisBlocks(SectionReading& section) noexcept : scan_(section) {}

    void read() {
        while (scan_.next()) {
            if (ends_block(trim_view(scan_.line()))) {
                scan_.begin(LineForm::BlockEnd);
                open_ = false;
                primitives_ = 0;
            } else if (!open_) {
                add_centers(scan_);
                open_ = true;
            } else {
                read_body();
            }
        }
    }

   private:
    bool take_primitive() {
        const bool is_one = primitives_ > 0 && is_fortran_or_c_number(scan_.field(0));
        primitives_ = is_one ? primitives_ - 1 : 0;
        return is_one;
    }

    bool begins_shell() {
        if (is_slater_shell(scan_)) {
            return true;
        }
        primitives_ = primitives_of(scan_);
        return primitives_ > 0;
    }

    void read_body() {
        if (take_primitive()) {
            scan_.begin(LineForm::Primitive);
        } else if (begins_shell()) {
            scan_.begin(LineForm::Shell);
        } else if (centers_of(scan_) != Centers::None) {
            add_centers(scan_);
            return;
        } else {
            scan_.begin(LineForm::Name);
        }
        scan_.add_rest(0);
    }

    SectionScanner scan_;
    bool open_ = false;
    std::int64_t primitives_ = 0;  // that the last shell still wants
};

}  // namespace

bool ends_block(std::string_view line) noexcept { return line.substr(0, 4) == "****" || line.substr(0, 4) == "++++"; }

Centers centers_of(const SectionScanner& scan) {
    const bool has_zero = scan.size() >= 2 && scan.field(scan.size() - 1) == "0";
    if (!has_zero && (scan.field(0).front() != '-' || !is_element(scan.field(0)))) {
        return Centers::None;
    }
    Centers centers = Centers::Elements;
    for (std::size_t i = 0; i < scan.size() - (has_zero ? 1 : 0); ++i) {
        if (is_number_range_text(scan.field(i))) {
            centers = Centers::Numbers;
        } else if (!is_element(scan.field(i))) {
            return Centers::None;
        }
    }
    return centers;
}

void add_centers(SectionScanner& scan) {
    scan.begin(LineForm::Centers);
    for (std::size_t i = 0; i < scan.size(); ++i) {
        const std::string_view field = scan.field(i);
        const bool is_end = i > 0 && i + 1 == scan.size() && field == "0";
        scan.add(field, is_end                        ? TokenKind::End
                        : is_number_range_text(field) ? TokenKind::Atoms
                        : is_element(field)           ? TokenKind::Element
                                                      : TokenKind::Word);
    }
}

void read_basis_blocks(SectionReading& section) { BasisBlocks(section).read(); }

}  // namespace quor::input::gaussian
