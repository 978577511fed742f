// Notes places and faults while a job is read, and gives the places as lines.
#include <gjf/core/reader/reading.hpp>

#include <algorithm>
#include <stdexcept>

namespace quor::input::gaussian {
namespace {

// Finds lines by offsets. These are mostly asked for in order, so the line asked for last and the one behind it are tried
// first.
class LineNumbers {
   public:
    explicit LineNumbers(const JobPiece& piece) noexcept : piece_(piece) {}

    std::size_t of(std::uint32_t offset) noexcept {
        if (!holds(last_, offset)) {
            last_ = holds(last_ + 1, offset) ? last_ + 1 : search(offset);
        }
        return piece_.first_line + last_;
    }
    LineRange of(Span lines) noexcept {
        if (lines.empty()) {
            return {};
        }
        const std::size_t first = of(lines.begin);
        return {first, of(lines.end())};
    }
    TextPlace place_of(Span span) noexcept {
        const std::size_t line = of(span.begin);
        return {line, span.begin - begin(last_) + 1, span.length};
    }
    std::vector<std::size_t> of(const std::vector<std::uint32_t>& offsets) {
        std::vector<std::size_t> numbers(offsets.size());
        std::transform(offsets.begin(), offsets.end(), numbers.begin(), [this](std::uint32_t offset) { return of(offset); });
        return numbers;
    }

   private:
    std::size_t begin(std::size_t line) const noexcept {
        return static_cast<std::size_t>(piece_.lines[line].data() - piece_.text.data());
    }
    bool holds(std::size_t line, std::uint32_t offset) const noexcept {
        return line < piece_.lines.size() && begin(line) <= offset && offset <= begin(line) + piece_.lines[line].size();
    }
    std::size_t search(std::uint32_t offset) const noexcept {
        const char* place = piece_.text.data() + offset;
        const auto behind = std::upper_bound(piece_.lines.begin(), piece_.lines.end(), place,
                                             [](const char* at, std::string_view line) { return at < line.data(); });
        return behind == piece_.lines.begin() ? 0 : static_cast<std::size_t>(behind - piece_.lines.begin()) - 1;
    }

    const JobPiece& piece_;
    std::size_t last_ = 0;
};

}  // namespace

Span ReadingRecorder::place_of(LineSpan lines) const noexcept {
    if (lines.empty()) {
        return {};
    }
    const Span last = place_of(lines.back());
    const std::uint32_t begin = place_of(lines.front()).begin;
    return {begin, last.end() - begin};
}

void report_fault(ReadingRecorder* recorder, std::string_view place, std::string message, FaultKind kind) {
    if (recorder != nullptr) {
        const Span span = place.empty() ? recorder->current_line : recorder->place_of(place);
        recorder->reading.faults.push_back({span, std::move(message), kind});
    } else if (kind == FaultKind::OutOfRange) {
        throw std::out_of_range(message);
    } else {
        throw GJFParseException(message);
    }
}

void report_departure(ReadingRecorder* recorder, std::string_view place, std::string message) {
    report_fault(recorder, place, std::move(message));
    if (recorder != nullptr) {
        recorder->reading.faults.back().harmless = true;
    }
}

std::string message_of(const GJFParseException& error) {
    return std::string(error.what()).substr(std::string_view("GJF Parse Error: ").size());
}

void note_refusal(ReadingRecorder& recorder, const std::function<void()>& read) {
    try {
        read();
    } catch (const GJFParseException& error) {
        report_departure(&recorder, {}, message_of(error));
    } catch (const std::out_of_range&) {
        // Told where that number stands.
    }
}

void note_doubt(ReadingRecorder* recorder, bool JobReading::*doubt) noexcept {
    if (recorder != nullptr) {
        recorder->reading.*doubt = true;
    }
}

void note_charge_line(ReadingRecorder* recorder, std::string_view line) noexcept {
    if (recorder != nullptr) {
        recorder->at(line);
        recorder->reading.places.charge_line = recorder->current_line;
    }
}

void number_lines(const JobPiece& piece, JobReading& reading) {
    const JobPlaces& places = reading.places;
    JobLayout& layout = reading.layout;
    LineNumbers numbers(piece);
    layout.number = piece.number;
    layout.lines = {piece.first_line, piece.first_line + piece.lines.size() - 1};
    for (const Link0Place& line : places.link0) {
        layout.link0_lines.push_back(numbers.of(line.key.begin));
    }
    for (const Span word : places.route_words) {
        layout.route_words.push_back(numbers.place_of(word));
    }
    layout.overlays = numbers.of(places.overlays);
    layout.title = numbers.of(places.title);
    layout.charge_line = places.charge_line.empty() ? 0 : numbers.of(places.charge_line.begin);
    layout.molecule = numbers.of(places.molecule);
    layout.atoms = numbers.of(places.atoms);
    layout.zmatrix_rows = numbers.of(places.zmatrix_rows);
    layout.variables = numbers.of(places.variables);
    layout.constants = numbers.of(places.constants);
    layout.cartesian_variables = numbers.of(places.cartesian_variables);
    for (const SectionPlace& section : places.sections) {
        layout.sections.push_back({section.kind, numbers.of(section.lines)});
    }
    for (const ReadingFault& fault : reading.faults) {
        layout.faults.push_back(numbers.place_of(fault.place));
    }
}

}  // namespace quor::input::gaussian
