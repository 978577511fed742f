// Reads charge lines: pairs of charge and multiplicity.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

void cut_charge_fields(std::string_view text, Fields& fields) {
    Fields pieces;
    cut_fields(text, pieces);
    fields.clear();
    for (std::string_view piece : pieces) {
        for (std::size_t end = 0; end != std::string_view::npos; piece.remove_prefix(std::min(end + 1, piece.size()))) {
            end = piece.find('/');
            if (const std::string_view field = piece.substr(0, end); !field.empty()) {
                fields.push_back(field);
            }
        }
    }
}

std::vector<ChargeSpinPair> read_charge_line(std::string_view line, ReadingRecorder* recorder) {
    const auto fail = [&](std::string_view place, std::string message, FaultKind kind) {
        report_fault(recorder, place, std::move(message), kind);
        note_doubt(recorder, &JobReading::structure_uncertain);
        return std::vector<ChargeSpinPair>();
    };
    Fields fields;
    const std::string_view text = without_comment(line);
    const bool has_slash = recorder != nullptr && text.find('/') != std::string_view::npos;
    if (has_slash) {
        cut_charge_fields(text, fields);
    } else {
        cut_fields(text, fields);
    }
    if (fields.size() < 2 || fields.size() % 2 != 0) {
        return fail(line, "Invalid charge/spin line: " + std::string(line), FaultKind::Parse);
    }
    std::vector<ChargeSpinPair> pairs;
    pairs.reserve(fields.size() / 2);
    for (std::size_t i = 0; i < fields.size(); i += 2) {
        const auto pair = fields.begin() + static_cast<std::ptrdiff_t>(i);
        if (const auto word = std::find_if_not(pair, pair + 2, is_integer_text); word != pair + 2) {
            return fail(*word, "Invalid charge/spin line: " + std::string(line), FaultKind::Parse);
        }
        const std::optional<std::int32_t> charge = to_int32(pair[0]);
        const std::optional<std::int32_t> multiplicity = to_int32(pair[1]);
        if (!charge || !multiplicity) {
            return fail(pair[charge ? 1 : 0], "charge or multiplicity beyond 32 bits", FaultKind::OutOfRange);
        }
        pairs.push_back({*charge, *multiplicity});
    }
    if (has_slash) {
        report_departure(recorder, line, "Invalid charge/spin line: " + std::string(line));
    }
    return pairs;
}

bool is_valid_geometry_first_line(std::string_view line) {
    Fields fields;
    cut_fields(without_comment(line), fields);
    return fields.size() >= 2 && fields.size() % 2 == 0 && std::all_of(fields.begin(), fields.end(), is_integer_text);
}

std::vector<ChargeSpinPair> GJFParser::parse_charge_spin_line(const std::string& line) {
    return read_charge_line(line, nullptr);
}

bool GJFParser::is_valid_geometry_first_line(const std::string& line) {
    return gaussian::is_valid_geometry_first_line(line);
}

}  // namespace quor::input::gaussian
