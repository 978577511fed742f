// Bounds what an input may cost: ten times the input may take ten times the time and memory, and not much more.
//
// Memory is counted in bytes of operator new, so it is exact. Time is the best of several runs of this thread's own clock; a
// quadratic step shows as a factor of a hundred, and the bound lies between.
#include <gjf/gjf.hpp>
#include <gjf/core/schema/embedded_schema.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <iomanip>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "../../tools/write_schema_image/embedded_image.hpp"
#include "../support/allocations.hpp"
#include "../support/files.hpp"

namespace quor::test {
namespace {

using namespace input::gaussian;

constexpr double time_factor_limit = 35;    // for ten times the input: linear is 10, quadratic 100
constexpr double memory_factor_limit = 25;  // growing buffers double: linear is 5 to 20
constexpr double shortest_time = 0.0005;    // seconds: shorter ones are taken for this

/// An input of a size, and what is done with it.
struct Input {
    const char* name;
    std::size_t size;  ///< the smallest of the three sizes
    std::function<std::string(std::size_t size)> make;
    std::function<void(const std::string& text)> use;
};

struct Cost {
    double seconds = 0;
    double bytes = 0;
};

double thread_seconds() {
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

Cost cost_of(const Input& input, std::size_t size) {
    const std::string text = input.make(size);
    Cost cost{1e9, 0};
    for (int run = 0; run < 5; ++run) {
        restart_peak();
        const std::size_t before = live_bytes();
        const double start = thread_seconds();
        input.use(text);
        cost.seconds = std::min(cost.seconds, thread_seconds() - start);
        cost.bytes = static_cast<double>(peak_bytes() - before);
        if (cost.seconds > 0.02) {
            break;  // long enough to be told from noise
        }
    }
    cost.seconds = std::max(cost.seconds, shortest_time);
    return cost;
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

// Puts a number where "@" stands.
std::string numbered(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 1; i <= count; ++i) {
        for (const char c : text) {
            c == '@' ? all += std::to_string(i) : all += c;
        }
    }
    return all;
}

const std::string head = "# hf/sto-3g\n\nt\n\n0 1\n";
const std::string one_atom = "He 0.0 0.0 0.0\n";

// Reads, looks at the layout, reports, edits, writes, compares and takes atoms out.
void do_all(const std::string& text) {
    try {
        GJFMultiEditor editor(GJFParser::parse_string_multi(text));
        read_jobs_with_layout(text);
        GJFParser::format_full_multi_gjf(editor.get_multi_data());
        editor.job(0).upsert_keyword("freq");
        editor.job(0).set_freeze_all(-1);
        editor.job(0).set_fragment_all("1");
        editor.job(0).move_atoms_to_end({0});
        editor.to_gjf_string();
        GJFEditor& job = editor.job(0);
        find_difference(job.get_data(), GJFData(job.get_data()));
        std::vector<std::size_t> every_other;
        for (std::size_t i = 0; i < job.get_data().geom.atoms.size(); i += 2) {
            every_other.push_back(i);
        }
        job.remove_atoms(every_other);
    } catch (const GJFParseException&) {
        read_jobs_with_layout(text);
    }
}

void interpret(const std::string& route) {
    G16KeywordParser parser(default_route_schema());
    parser.parse(route);
    const ParsedKeywords parsed = parser.get_parsed_keywords();
    parsed.has_keyword("freq");
    parsed.get_keyword_variable("opt", "maxcycles");
    GJFEditor editor{GJFData()};
    editor.set_route_section(GJFParser::parse_keywords_from_line("# " + route, ""));
    editor.ensure_keyword_option("opt", {"tight", std::nullopt});
    editor.upsert_keyword("freq");
}

std::string bonds(std::size_t atoms, std::size_t bonds_each) {
    std::string text;
    for (std::size_t i = 1; i <= atoms; ++i) {
        text += std::to_string(i);
        for (std::size_t j = i + 1; j <= std::min(atoms, i + bonds_each); ++j) {
            text += " " + std::to_string(j) + " 1.0";
        }
        text += "\n";
    }
    return text;
}

const std::vector<Input>& job_inputs() {
    static const std::vector<Input> all = {
        {"atoms", 200, [](std::size_t n) { return head + repeated("C 1.0 2.0 3.0\n", n); }, do_all},
        {"atoms with labels", 80,
         [](std::size_t n) { return head + numbered("C-CT--0.1(Fragment=@,ResName=ALA,ResNum=@_A) -1 1.0 2.0 3.0 H\n", n); },
         do_all},
        {"bonds", 100,
         [](std::size_t n) {
             return "# hf/sto-3g geom=connectivity\n\nt\n\n0 1\n" + repeated(one_atom, n) + "\n" + bonds(n, 4) + "\n";
         },
         do_all},
        {"bonds of one atom", 150,
         [](std::size_t n) {
             return "# hf/sto-3g geom=connectivity\n\nt\n\n0 1\n" + repeated(one_atom, n + 1) + "\n" +
                    bonds(1, 0).substr(0, 1) + numbered(" 2 @.0", n) + "\n\n";
         },
         do_all},
        {"jobs", 20, [](std::size_t n) { return repeated(head + one_atom + "\n--Link1--\n", n); }, do_all},
        {"pieces without jobs", 2000, [](std::size_t n) { return head + one_atom + repeated("\n--link1--\n", n); }, do_all},
        {"charge and multiplicity pairs", 500,
         [](std::size_t n) { return "# hf\n\nt\n\n" + repeated("0 1 ", n) + "\n" + one_atom; }, do_all},
        {"label parameters", 200, [](std::size_t n) { return head + "C(a=1" + numbered(",key@=@", n) + ") 1.0 2.0 3.0\n"; },
         do_all},
        {"dashes in a label", 500, [](std::size_t n) { return head + "C" + repeated("-", n) + "x 1.0 2.0 3.0\n"; }, do_all},
        {"number after number in a label", 500,
         [](std::size_t n) { return head + "C" + repeated("-1e", n) + " 1.0 2.0 3.0\n"; }, do_all},
        {"nested brackets in a label", 1000,
         [](std::size_t n) { return head + "C" + repeated("([{", n) + " 1.0 2.0 3.0\n" + one_atom; }, do_all},
        {"quotes that nothing closes", 200, [](std::size_t n) { return head + numbered("O@' 1.0 2.0 3.0\n", n); }, do_all},
        {"quotes in one line", 1000, [](std::size_t n) { return head + "C" + repeated("'\"", n) + " 1.0 2.0 3.0\n"; },
         do_all},
        {"digits of one number", 2000, [](std::size_t n) { return head + "C 1." + repeated("7", n) + " 2.0 3.0\n"; },
         do_all},
        {"Z-matrix rows and variables", 80,
         [](std::size_t n) {
             return head + "C\n" + numbered("H 1 r@\n", n) + "\nVariables:\n" + numbered("r@=1.@\n", n) + "\n";
         },
         do_all},
        {"Cartesian variables", 200,
         [](std::size_t n) { return head + numbered("H x@ 0.0 -x@\n", n) + "\n" + numbered("x@=1.@\n", n) + "\n"; }, do_all},
        {"constants that nothing uses", 400,
         [](std::size_t n) { return head + "C\nH 1 r\n\nr=1.0\n\nConstants:\n" + numbered("c@=1.@\n", n) + "\n"; }, do_all},
        {"extra sections", 400, [](std::size_t n) { return head + one_atom + numbered("\nsection @\n", n); }, do_all},
        {"Link 0 lines", 400, [](std::size_t n) { return numbered("%kjob@=l@\n", n) + head + one_atom; }, do_all},
        {"title lines", 1000, [](std::size_t n) { return "# hf\n\n" + repeated("0 1\n", n) + "\n0 1\n" + one_atom; },
         do_all},
        {"blank lines", 3000, [](std::size_t n) { return repeated(" \n", n) + head + one_atom + repeated("\n", n); },
         do_all},
        {"comment lines", 400,
         [](std::size_t n) {
             return repeated("! c\n", n) + head + repeated("! c\n", n) + one_atom + repeated("\n! c\n", n);
         },
         do_all},
        {"one long line", 5000, [](std::size_t n) { return head + repeated("x", n) + " 1.0 2.0 3.0\n"; }, do_all},
        {"bytes that are no text", 5000, [](std::size_t n) { return repeated(std::string("\0\xff\x80\r", 4), n); }, do_all},
    };
    return all;
}

const std::vector<Input>& route_inputs() {
    static const std::vector<Input> all = {
        {"route words", 50, [](std::size_t n) { return repeated("freq opt=tight ", n); }, interpret},
        {"unknown words", 10, [](std::size_t n) { return numbered("zz@ ", n); }, interpret},
        {"ambiguous words", 3, [](std::size_t n) { return numbered("o@ f g s ", n); }, interpret},
        {"the same ambiguous option", 50, [](std::size_t n) { return "opt=(" + repeated("m,", n) + "m)"; }, interpret},
        {"options", 50, [](std::size_t n) { return "iop(" + numbered("6/@=1,", n) + "1/1=1)"; }, interpret},
        {"one word of many letters", 2000, [](std::size_t n) { return repeated("x", n); }, interpret},
        {"one basis set of many letters", 1000, [](std::size_t n) { return "hf/6-311" + repeated("+", n) + "g"; },
         interpret},
        {"one basis set of many brackets", 500, [](std::size_t n) { return "hf/6-31g" + repeated("(d)", n); }, interpret},
        {"nested parentheses", 1000, [](std::size_t n) { return "opt=" + repeated("(", n) + "x" + repeated(")", n); },
         interpret},
        {"open parentheses", 1000, [](std::size_t n) { return repeated("opt(", n); }, interpret},
        {"closing parentheses", 200, [](std::size_t n) { return repeated("opt) ", n / 10); }, interpret},
        {"equals signs", 1000, [](std::size_t n) { return "opt" + repeated("=", n); }, interpret},
        {"slashes", 60, [](std::size_t n) { return "hf" + repeated("/sto-3g", n); }, interpret},
        {"dashes", 1000, [](std::size_t n) { return "mp2" + repeated("-full", n); }, interpret},
        {"quotes", 100, [](std::size_t n) { return repeated("'a' \"", n); }, interpret},
        {"ONIOM layers", 200, [](std::size_t n) { return "oniom(" + repeated("hf/sto-3g:", n) + "uff)"; }, interpret},
        {"repeated heads", 60, [](std::size_t n) { return repeated("#p ", n) + "hf"; }, interpret},
    };
    return all;
}

/// Writes a text with a change in the job that it holds.
void write_document(const std::string& text, const std::function<void(GJFEditor&)>& edit) {
    GJFDocument document(text);
    edit(document.job(0));
    document.to_text();
}

std::function<void(const std::string&)> written_with(const std::function<void(GJFEditor&)>& edit) {
    return [edit](const std::string& text) { write_document(text, edit); };
}

std::string route_of(const std::string& words) { return "# hf/sto-3g" + words + "\n\nt\n\n0 1\n" + one_atom; }

const std::vector<Input>& document_inputs() {
    static const auto set_title = [](GJFEditor& job) { job.set_title("b"); };
    static const auto add_keyword = [](GJFEditor& job) { job.add_keyword("opt"); };
    static const std::vector<Input> all = {
        {"a document of equal sections", 80, [](std::size_t n) { return head + one_atom + "\n" + repeated("same\n\n", n); },
         written_with(set_title)},
        {"a document of other sections", 80,
         [](std::size_t n) { return head + one_atom + numbered("\nsection @\n", n) + "\n"; }, written_with(set_title)},
        {"a document whose sections all change", 80,
         [](std::size_t n) { return head + one_atom + "\n" + repeated("same\n\n", n); }, written_with([](GJFEditor& job) {
             GJFData data = job.get_data();
             for (ExtraInputSection& section : data.extra_inputs) {
                 section.content = "other";
             }
             job.set_data(std::move(data));
         })},
        {"a document whose sections go", 80, [](std::size_t n) { return head + one_atom + "\n" + repeated("same\n\n", n); },
         written_with([](GJFEditor& job) {
             GJFData data = job.get_data();
             data.extra_inputs.clear();
             job.set_data(std::move(data));
         })},
        {"a document of equal route words", 20, [](std::size_t n) { return route_of(repeated(" iop(3/5=1)", n)); },
         written_with(add_keyword)},
        {"a document of other route words", 20, [](std::size_t n) { return route_of(numbered(" iop(3/@=1)", n)); },
         written_with(add_keyword)},
        {"a document of unknown route words", 10, [](std::size_t n) { return route_of(numbered(" zz@", n)); },
         written_with(add_keyword)},
        {"a document whose route names basis sets", 20,
         [](std::size_t n) { return route_of(repeated(" basis=6-31g basis=sto-3g", n)); }, written_with(add_keyword)},
        {"a document whose route words go", 20, [](std::size_t n) { return route_of(numbered(" iop(3/@=1)", n)); },
         written_with([](GJFEditor& job) { job.remove_keyword_by_name("iop"); })},
        {"a document whose route words go behind blanks", 20,
         [](std::size_t n) {
             return "# hf/sto-3g\n" + repeated(" ", n) + repeated(" iop(3/5=1)", n) + " pop=full\n\nt\n\n0 1\n" + one_atom;
         },
         written_with([](GJFEditor& job) { job.remove_keyword_by_name("iop"); })},
        {"a document that is given route words", 20, [](std::size_t n) { return route_of(numbered(" zz@", n)); },
         [](const std::string& text) {
             write_document(text, [](GJFEditor& job) {
                 std::vector<std::string> words = job.get_data().control.route_keywords;
                 for (std::size_t i = words.size(); i > 2; --i) {
                     words.push_back("w" + words[i - 1]);
                 }
                 job.set_route_section(words);
             });
         }},
    };
    return all;
}

/// A vocabulary document in a file, which is loaded, examined and asked.
void load_and_ask(const std::string& text) {
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write("vocabulary.yaml", text);
    SimpleYAMLParser schema;
    schema.load_from_file(path);
    validate_route_schema(path);
    for (const char* word : {"a", "ab", "aaaaaaaaaaaaaaaa", "b", "1", "s1", "zz"}) {
        schema.basis_completions(word);
        schema.knows_basis(word);
        schema.normalize_keyword(word);
        schema.option_completions(word, word);
    }
}

// A graph of about so many edges in which each state leads to each other one by the edges `edge`, where "@" is the number of
// the state it leads to; the last state ends a word when `ends`.
std::string dense_graph(std::size_t edges, const std::string& edge, bool ends) {
    std::size_t count = 1;
    while (count * count < edges) {
        ++count;
    }
    std::string text = "states:\n  Basis: {includes: [s1]}\n";
    for (std::size_t i = 1; i <= count; ++i) {
        const std::string last = ends && i == count ? "{spec: nul, next: Exi}" : "";
        text += "  s" + std::to_string(i) + ": {specs: [" + numbered(edge + ", ", count) + last + "]}\n";
    }
    return text;
}

// States s1 to sn, each made by `state`, in which "@" is its number and "^" that of the next; the last is followed by the
// first.
std::string ring(std::size_t count, const std::string& state) {
    std::string text;
    for (std::size_t i = 1; i <= count; ++i) {
        for (const char c : state) {
            text += c == '@' ? std::to_string(i) : c == '^' ? std::to_string(i % count + 1) : std::string(1, c);
        }
    }
    return text;
}

const std::vector<Input>& schema_inputs() {
    static const std::vector<Input> all = {
        {"schema entries", 100,
         [](std::size_t n) { return "states: {GCL: {entries: [" + numbered("{forms: [a@, b@]}, ", n) + "]}}"; },
         load_and_ask},
        {"forms of one entry", 200,
         [](std::size_t n) { return "states: {GCL: {entries: [{forms: [x" + numbered(", a@", n) + "]}]}}"; }, load_and_ask},
        {"schema states", 100,
         [](std::size_t n) {
             return "states:\n" + ring(n, "  s@: {includes: [GCL], entries: [{forms: [a@], next: s^}]}\n");
         },
         load_and_ask},
        {"a ring of includes", 100,
         [](std::size_t n) {
             return "states:\n  GCL: {includes: [s1]}\n  Basis: {includes: [s1]}\n" + ring(n, "  s@: {includes: [s^]}\n");
         },
         load_and_ask},
        {"a ring that reads nothing", 100,
         [](std::size_t n) {
             return "states:\n  Basis: {includes: [s1]}\n" + ring(n, "  s@: {specs: [{spec: nul, next: s^}]}\n");
         },
         load_and_ask},
        {"a ring of one letter", 100,
         [](std::size_t n) {
             return "states:\n  Basis: {includes: [s1]}\n" +
                    ring(n, "  s@: {specs: [{spec: a, next: s^}, {spec: b, next: Exi}]}\n");
         },
         load_and_ask},
        {"keywords that share a chain of includes", 30,
         [](std::size_t n) {
             return "states:\n  GCL: {entries: [" + numbered("{forms: [a@]}, ", n) + "]}\n" +
                    ring(n, "  s@: {includes: [s^]}\n") + "metadata:\n  option_states:\n" + numbered("    a@: s1\n", n);
         },
         load_and_ask},
        {"a dense graph that reads nothing", 100,
         [](std::size_t n) { return dense_graph(n, "{spec: nul, next: s@}", true); }, load_and_ask},
        {"a dense graph of one letter", 100, [](std::size_t n) { return dense_graph(n, "{spec: a, next: s@}", true); },
         load_and_ask},
        {"a dense graph of two letters", 100,
         [](std::size_t n) { return dense_graph(n, "{spec: a, next: s@}, {spec: b, next: s@}", true); }, load_and_ask},
        {"a dense graph of letters and doubles", 100,
         [](std::size_t n) { return dense_graph(n, "{spec: a, next: s@}, {spec: aa, next: s@}", true); }, load_and_ask},
        {"a dense graph of many words", 100, [](std::size_t n) { return dense_graph(n, "{spec: a@, next: s@}", true); },
         load_and_ask},
        {"a dense graph that never ends", 100, [](std::size_t n) { return dense_graph(n, "{spec: a, next: s@}", false); },
         load_and_ask},
        {"one map named by many aliases", 50,
         [](std::size_t n) {
             return "x: &m {" + numbered("k@: 1, ", n) + "}\nstates: {GCL: {entries: [" + repeated("*m, ", n) + "]}}";
         },
         load_and_ask},
        {"one list named by many aliases", 50,
         [](std::size_t n) {
             return "x: &l [" + repeated("~, ", n) + "]\nstates: {" + numbered("s@: {entries: *l}, ", n) + "}";
         },
         load_and_ask},
        {"a list of entries named by many aliases", 50,
         [](std::size_t n) {
             return "x: &l [" + repeated("{forms: []}, ", n) + "]\nstates: {" + numbered("s@: {entries: *l}, ", n) + "}";
         },
         load_and_ask},
        {"a map that is its own entry", 50,
         [](std::size_t n) {
             return "states: {GCL: &s {" + numbered("k@: 1, ", n) + "entries: [" + repeated("*s, ", n) + "]}}";
         },
         load_and_ask},
        {"nested lists", 20, [](std::size_t n) { return repeated("[", n) + repeated("]", n); }, load_and_ask},
        {"keys that stand twice", 200, [](std::size_t n) { return "states: {" + repeated("GCL: {}, ", n) + "}"; },
         load_and_ask},
    };
    return all;
}

// An image that names one long text many times.
std::string image_of_one_text(std::size_t size, unsigned version) {
    SimpleYAMLParser::Impl tables;
    for (std::size_t i = 0; i < size; ++i) {
        tables.categories.insert_or_assign(std::to_string(i), std::string(version == 2 ? size : 1, 'x'));
    }
    return encode_base64(SchemaImageWriter(tables, version).write());
}

void load_image(const std::string& text) {
    SimpleYAMLParser::Impl tables;
    load_embedded_schema_from_base64(tables, text);
}

const std::vector<Input>& image_inputs() {
    static const std::vector<Input> all = {
        {"an image of many texts", 100, [](std::size_t n) { return image_of_one_text(n, 1); }, load_image},
        {"base64 that is no image", 1000, [](std::size_t n) { return repeated("QUJD\n", n); }, load_image},
    };
    return all;
}

void expect_linear(const Input& input) {
    SCOPED_TRACE(input.name);
    input.use(input.make(input.size));  // whatever is set up on first use
    const Cost small = cost_of(input, input.size);
    const Cost middle = cost_of(input, 10 * input.size);
    const Cost large = cost_of(input, 100 * input.size);
    const double time_factor = large.seconds / middle.seconds;
    const double memory_factor = large.bytes / std::max(middle.bytes, 10'000.0);
    std::cout << std::left << std::setw(42) << input.name << std::right << std::fixed << std::setprecision(4)
              << std::setw(10) << small.seconds << std::setw(10) << middle.seconds << std::setw(10) << large.seconds
              << " s  x" << std::setprecision(1) << time_factor << "   memory x" << memory_factor << '\n';
    EXPECT_LT(time_factor, time_factor_limit);
    EXPECT_LT(memory_factor, memory_factor_limit);
}

TEST(Cost, OfJobsIsLinear) { std::for_each(job_inputs().begin(), job_inputs().end(), expect_linear); }

TEST(Cost, OfRoutesIsLinear) { std::for_each(route_inputs().begin(), route_inputs().end(), expect_linear); }

TEST(Cost, OfDocumentsIsLinear) { std::for_each(document_inputs().begin(), document_inputs().end(), expect_linear); }

TEST(Cost, OfAnImageThatNamesOneTextManyTimesIsBoundedByItsSize) {
    for (const std::size_t size : {300u, 3000u, 30'000u}) {
        const std::string text = image_of_one_text(size, 2);
        restart_peak();
        const std::size_t before = live_bytes();
        load_image(text);
        EXPECT_LT(peak_bytes() - before, 2'000'000 + 110 * text.size()) << size;
    }
}

TEST(Cost, OfImagesIsLinear) { std::for_each(image_inputs().begin(), image_inputs().end(), expect_linear); }

TEST(Cost, OfVocabulariesIsLinear) { std::for_each(schema_inputs().begin(), schema_inputs().end(), expect_linear); }

}  // namespace
}  // namespace quor::test
