// What jobs, routes and edits of documents may cost.
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "cost.hpp"

namespace quor::test {
namespace {

using namespace input::gaussian;

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

TEST(Cost, OfJobsIsLinear) { std::for_each(job_inputs().begin(), job_inputs().end(), expect_linear); }

TEST(Cost, OfRoutesIsLinear) { std::for_each(route_inputs().begin(), route_inputs().end(), expect_linear); }

TEST(Cost, OfDocumentsIsLinear) { std::for_each(document_inputs().begin(), document_inputs().end(), expect_linear); }

}  // namespace
}  // namespace quor::test
