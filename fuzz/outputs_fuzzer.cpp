// Reads any bytes as an output, a formatted checkpoint, gzip or xz: they are refused or told of, the same whatever pieces
// they come in, and no energy is told that is none.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/core/output/diagnosis.hpp>
#include <gjf/core/report/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;

// Gives a few bytes at a time.
class SlowSource final : public OutputSource {
   public:
    SlowSource(std::string_view text, std::size_t piece) : text_(text), piece_(piece) {}
    std::size_t read(char* bytes, std::size_t size) override {
        const std::size_t count = text_.copy(bytes, std::min(size, piece_));
        text_.remove_prefix(count);
        return count;
    }

   private:
    std::string_view text_;
    std::size_t piece_;
};

// Holds what may be said of steps, lines and numbers while they are told.
class HoldingVisitor final : public OutputVisitor {
   public:
    void on_line(std::size_t line, std::string_view /*text*/) override {
        hold(line == line_ || line == line_ + 1, "lines are told in their order");
        line_ = line;
    }
    void on_step(const OutputStep& step) override {
        hold(!is_in_step_ && step.line > 0, "a step begins when the one before has ended");
        is_in_step_ = true;
    }
    void on_step_end(const StepEnd& /*end*/) override {
        hold(is_in_step_, "each step ends once");
        is_in_step_ = false;
    }
    void on_energy(const OutputEnergy& energy) override { hold(std::isfinite(energy.value), "an energy is a number"); }
    void on_geometry(const OutputGeometry& geometry) override {
        hold(is_in_step_ && geometry.line <= line_, "a geometry has a place in a step");
    }
    void on_modes(const OutputModes& modes) override {
        hold(modes.displacements.size() == modes.frequencies.size(), "each vibration has its displacements");
    }
    bool is_in_step() const { return is_in_step_; }

   private:
    std::size_t line_ = 0;
    bool is_in_step_ = false;
};

std::string told(std::unique_ptr<OutputSource> source) {
    try {
        const Diagnosis diagnosis = diagnose_output(*source);
        const OutputSummary& summary = diagnosis.summary;
        hold(!summary.energy || summary.energy->converged, "what did not converge is no energy");
        hold(summary.termination() != StepTermination::Normal || diagnosis.cause.empty(),
             "what ended normally has no cause");
        hold(!summary.best || summary.best->energy, "the best geometry has an energy");
        return diagnosis_json("-", diagnosis);
    } catch (const OutputError& error) {
        return error.what();
    }
}

}  // namespace

int outputs(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string all = told(text_source(text));
    hold(told(std::make_unique<SlowSource>(text, 1 + size % 7)) == all, "pieces do not matter");
    told(decompressed(text_source(text)));
    HoldingVisitor visitor;
    try {
        read_output(*text_source(text), visitor);
        hold(!visitor.is_in_step(), "the last step has ended");
    } catch (const OutputError&) {
        // A formatted checkpoint that cannot be read.
    }
    return 0;
}

}  // namespace quor::fuzz
