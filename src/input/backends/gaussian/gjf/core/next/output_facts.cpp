// Gathers what is needed of an output while it is read again.
#include <gjf/core/next/output_facts.hpp>

#include <gjf/core/output/output_source.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

std::vector<std::string> echoed_fields(std::string_view line) {
    std::vector<std::string> fields;
    std::string field;
    int depth = 0;
    for (const char c : line) {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (depth == 0 && (c == ' ' || c == ',')) {
            if (!field.empty()) {
                fields.push_back(std::exchange(field, {}));
            }
        } else {
            field += c;
        }
    }
    if (!field.empty()) {
        fields.push_back(field);
    }
    return fields;
}

class FactsVisitor final : public SummaryVisitor {
   public:
    void on_line(std::size_t line, std::string_view text) override {
        SummaryVisitor::on_line(line, text);
        const std::string_view words = trim_view(text);
        if (words == "Symbolic Z-matrix:" || words.starts_with("Redundant internal coordinates found in file") ||
            words.starts_with("Redundant internal coordinates taken from checkpoint")) {
            echo_ = is_internal_ ? Echo::None : Echo::Atoms;
            facts_.atoms = is_internal_ ? std::move(facts_.atoms) : std::vector<EchoedAtom>();
        } else if (words.starts_with("The following ModRedundant input section has been read")) {
            echo_ = Echo::ModRedundant;
            facts_.modredundant.clear();
        } else if (echo_ == Echo::Atoms) {
            take_atom(words);
        } else if (echo_ == Echo::ModRedundant) {
            echo_ = words.empty() ? Echo::None : echo_;
            facts_.modredundant += words.empty() ? std::string() : std::string(words) + '\n';
        }
    }

    void on_step(const OutputStep& step) override {
        SummaryVisitor::on_step(step);
        is_internal_ = step.is_internal;
        echo_ = Echo::None;
        if (!step.is_internal) {
            facts_.modredundant.clear();
            facts_.first.reset();
        }
    }

    void on_geometry(const OutputGeometry& geometry) override {
        SummaryVisitor::on_geometry(geometry);
        if (!facts_.first && !is_internal_) {
            facts_.first = geometry;
        }
    }

    void on_modes(const OutputModes& modes) override {
        SummaryVisitor::on_modes(modes);
        // The precise table comes before the other, which tells the same once more.
        const bool begins = modes.is_precise != is_precise_ || modes.line < modes_line_;
        if (begins && is_precise_ && !modes.is_precise && !facts_.imaginary.empty()) {
            return;
        }
        is_precise_ = modes.is_precise;
        modes_line_ = modes.line;
        for (std::size_t i = 0; i < modes.frequencies.size(); ++i) {
            if (i < modes.displacements.size() && modes.frequencies[i] < 0) {
                facts_.imaginary.push_back({modes.frequencies[i], modes.atoms, modes.displacements[i]});
            }
        }
    }

    OutputFacts result() {
        std::stable_sort(facts_.imaginary.begin(), facts_.imaginary.end(),
                         [](const ImaginaryMode& a, const ImaginaryMode& b) { return a.frequency < b.frequency; });
        return std::move(facts_);
    }

   private:
    enum class Echo : std::uint8_t { None, Atoms, ModRedundant };

    void take_atom(std::string_view words) {
        if (words.starts_with("Charge =") || words.find('\\') != std::string_view::npos || words.ends_with(".chk")) {
            return;
        }
        const std::vector<std::string> fields = echoed_fields(words);
        const bool is_atom = !fields.empty() && (is_letter(fields[0][0]) || fields[0][0] == '-') && !words.ends_with(':') &&
                             !words.starts_with("Recover");
        if (!is_atom) {
            echo_ = Echo::None;
            return;
        }
        const bool has_code = fields.size() >= 5 && fields[1].find_first_not_of("-0123456789") == std::string::npos &&
                              fields[2].find('.') != std::string::npos;
        facts_.atoms.push_back({fields[0], has_code && fields[1] != "0" ? fields[1] : std::string()});
    }

    void on_point(const OutputPoint& point) override {
        if (point.scan_point == 0 || !point.energy) {
            return;
        }
        if (facts_.scan.empty() || facts_.scan.back().scan_point != point.scan_point) {
            facts_.scan.push_back(point);
        } else {
            facts_.scan.back() = point;
        }
    }

    OutputFacts facts_;
    Echo echo_ = Echo::None;
    bool is_internal_ = false;
    bool is_precise_ = false;
    std::size_t modes_line_ = 0;
};

}  // namespace

OutputFacts read_output_facts(const std::string& path) {
    FactsVisitor visitor;
    read_output(*open_output(path), visitor);
    return visitor.result();
}

}  // namespace quor::input::gaussian
