// Documents over every job file there is: no edit keeps every byte, one edit changes only the lines that it names, the new
// text reads to the job that was meant, editing again changes nothing more, and what is written by the record of edits is
// what is written by comparing jobs.
#include <gjf/core/document/gjf_document.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "../support/files.hpp"
#include "../support/written_by_comparison.hpp"
#include "many_jobs.hpp"

namespace quor::input::gaussian {
namespace {

struct NamedText {
    std::string name;
    std::string text;
};

// The texts of all files that open as documents.
const std::vector<NamedText>& all_texts() {
    static const std::vector<NamedText> texts = [] {
        std::vector<NamedText> list;
        for (const std::filesystem::path& path : test::all_job_files()) {
            std::string text = quor::test::bytes_of(path);
            try {
                const GJFDocument document(text);
                list.push_back({path.filename().string(), std::move(text)});
            } catch (const GJFParseException&) {
                continue;
            }
        }
        return list;
    }();
    return texts;
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        lines.push_back(text.substr(begin, end - begin));
        begin = end;
    }
    return lines;
}

// The numbers (from 1) of the old lines that are not, in their order, in the new text: the longest common subsequence is
// kept.
std::set<std::size_t> changed_lines(const std::string& before, const std::string& after) {
    const std::vector<std::string> a = lines_of(before);
    const std::vector<std::string> b = lines_of(after);
    std::size_t begin = 0;
    while (begin < a.size() && begin < b.size() && a[begin] == b[begin]) {
        ++begin;
    }
    std::size_t tail = 0;
    while (tail < a.size() - begin && tail < b.size() - begin && a[a.size() - 1 - tail] == b[b.size() - 1 - tail]) {
        ++tail;
    }
    const std::size_t n = a.size() - begin - tail;
    const std::size_t m = b.size() - begin - tail;
    std::vector<std::vector<unsigned>> length(n + 1, std::vector<unsigned>(m + 1));
    for (std::size_t i = n; i-- > 0;) {
        for (std::size_t j = m; j-- > 0;) {
            length[i][j] =
                a[begin + i] == b[begin + j] ? length[i + 1][j + 1] + 1 : std::max(length[i + 1][j], length[i][j + 1]);
        }
    }
    std::set<std::size_t> changed;
    for (std::size_t i = 0, j = 0; i < n;) {
        if (j < m && a[begin + i] == b[begin + j]) {
            ++i;
            ++j;
        } else if (j < m && length[i][j + 1] >= length[i + 1][j]) {
            ++j;
        } else {
            changed.insert(begin + i + 1);
            ++i;
        }
    }
    return changed;
}

using Lines = std::set<std::size_t>;

void add_range(Lines& lines, const LineRange& range) {
    for (std::size_t line = range.first; range.first != 0 && line <= range.last; ++line) {
        lines.insert(line);
    }
}

Lines link0_lines(const JobLayout& layout) { return {layout.link0_lines.begin(), layout.link0_lines.end()}; }

Lines route_lines(const JobLayout& layout) {
    Lines lines;
    for (const TextPlace& word : layout.route_words) {
        lines.insert(word.line);
    }
    return lines;
}

Lines atom_lines(const JobLayout& layout) { return {layout.atoms.begin(), layout.atoms.end()}; }

Lines molecule_and_section_lines(const JobLayout& layout) {
    Lines lines = atom_lines(layout);
    for (const SectionLayout& section : layout.sections) {
        add_range(lines, section.lines);
        // A section that is left empty goes with its blank lines.
        lines.insert(section.lines.last + 1);
        lines.insert(section.lines.first - 1);
    }
    return lines;
}

struct Operation {
    const char* name;
    std::function<void(GJFEditor&)> edit;
    Lines (*may_change)(const JobLayout&);
};

std::vector<Operation> operations() {
    return {
        {"set mem", [](GJFEditor& e) { e.set_mem("7GB"); }, link0_lines},
        {"set nproc", [](GJFEditor& e) { e.set_nproc(7); }, link0_lines},
        {"set chk", [](GJFEditor& e) { e.set_checkpoint_file("seven.chk"); }, link0_lines},
        {"remove mem", [](GJFEditor& e) { e.remove_mem(); }, link0_lines},
        {"set title", [](GJFEditor& e) { e.set_title("seven"); },
         [](const JobLayout& layout) {
             Lines lines;
             add_range(lines, layout.title);
             return lines;
         }},
        {"set charge", [](GJFEditor& e) { e.set_charge_and_spin(-7, 7); },
         [](const JobLayout& layout) { return Lines{layout.charge_line}; }},
        {"set method", [](GJFEditor& e) { e.set_method("m062x"); }, route_lines},
        {"set basis", [](GJFEditor& e) { e.set_basis_set("def2qzvp"); }, route_lines},
        {"add keyword",
         [](GJFEditor& e) {
             e.add_keyword_with_options("scf", {{"xqc", {}}});
         },
         route_lines},
        {"add option",
         [](GJFEditor& e) {
             e.ensure_keyword_option("integral", {"superfinegrid", {}});
         },
         route_lines},
        {"print level", [](GJFEditor& e) { e.set_output_mode("t"); }, route_lines},
        {"freeze all", [](GJFEditor& e) { e.set_freeze_all(-1); }, atom_lines},
        {"layers", [](GJFEditor& e) { e.set_oniom_layer_all("H"); }, atom_lines},
        {"fragments", [](GJFEditor& e) { e.set_fragment_all("7"); }, atom_lines},
        {"translate one", [](GJFEditor& e) { e.translate_atoms({0}, 100.5, 0, -7); },
         [](const JobLayout& layout) { return layout.atoms.empty() ? Lines() : Lines{layout.atoms.front()}; }},
        {"remove first atom", [](GJFEditor& e) { e.remove_atom(0); }, molecule_and_section_lines},
        {"remove last atom", [](GJFEditor& e) { e.remove_atom(e.get_data().geom.atoms.size() - 1); },
         molecule_and_section_lines},
        {"move first atom to the end", [](GJFEditor& e) { e.move_atom(0, e.get_data().geom.atoms.size() - 1); },
         molecule_and_section_lines},
    };
}

TEST(RealDocuments, KeepEveryByteWithoutAnEdit) {
    for (const NamedText& file : all_texts()) {
        EXPECT_EQ(GJFDocument(file.text).to_text(), file.text) << file.name;
    }
    EXPECT_GE(all_texts().size(), 42U);
}

TEST(RealDocuments, ChangeOnlyTheLinesThatAnEditNames) {
    std::map<std::string, std::size_t> written;
    std::map<std::string, std::map<std::string, std::size_t>> refused;
    for (const NamedText& file : all_texts()) {
        for (const Operation& operation : operations()) {
            GJFDocument document(file.text);
            try {
                operation.edit(document.job(0));
            } catch (const GJFParseException&) {
                continue;  // the editor itself refused
            }
            std::string text;
            try {
                text = document.to_text();
            } catch (const GJFParseException& error) {
                ++refused[operation.name][error.what()];
                continue;
            }
            ++written[operation.name];
            const Lines allowed = operation.may_change(document.layout(0));
            for (const std::size_t line : changed_lines(file.text, text)) {
                EXPECT_EQ(allowed.count(line), 1U) << file.name << ", " << operation.name << ": line " << line;
            }
            EXPECT_EQ(GJFDocument(text).to_text(), text) << file.name << ", " << operation.name;
        }
    }
    for (const Operation& operation : operations()) {
        EXPECT_GT(written[operation.name], 0U) << operation.name;
        std::cout << operation.name << ": " << written[operation.name] << " written";
        for (const auto& [reason, count] : refused[operation.name]) {
            std::cout << "; " << count << " refused: " << reason;
        }
        std::cout << "\n";
    }
}

// One of many edits, chosen at random; what it needs is drawn from the same source.
void random_edit(GJFEditor& editor, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    const std::size_t atoms = editor.get_data().geom.atoms.size();
    AtomCoord atom;
    atom.info.element = "Ne";
    atom.x = static_cast<double>(below(1000)) / 7.0;
    switch (below(16)) {
        case 0:
            return editor.set_mem(std::to_string(below(100)) + "GB");
        case 1:
            return editor.remove_mem();
        case 2:
            return editor.set_nproc(static_cast<int>(below(64)) + 1);
        case 3:
            return editor.set_title("title " + std::to_string(below(100)));
        case 4:
            return editor.set_charge_and_spin(static_cast<int>(below(5)) - 2, static_cast<int>(below(3)) + 1);
        case 5:
            return editor.add_atom(atom);
        case 6:
            return editor.remove_atom(below(atoms));
        case 7:
            return editor.move_atom(below(atoms), below(atoms));
        case 8:
            return editor.translate_atoms({below(atoms), below(atoms)}, 0.1, static_cast<double>(below(1000)), -12345.5);
        case 9:
            return editor.set_freeze_by_index({below(atoms)}, static_cast<int>(below(3)) - 1);
        case 10:
            return editor.set_bond_order(below(atoms), below(atoms), static_cast<double>(below(4)) * 0.5);
        case 11:
            return editor.set_fragment_by_index({below(atoms)}, std::to_string(below(3) + 1));
        case 12:
            return editor.set_method(below(2) == 0 ? "pm6" : "mp2");
        case 13:
            return editor.upsert_keyword_with_options("scf", {{"tight", {}}, {"maxcyc", std::to_string(below(500))}});
        case 14:
            return editor.remove_keyword_by_name("freq");
        default:
            return editor.replace_atom(below(atoms), atom);
    }
}

TEST(RealDocuments, ReadToTheMeantJobAfterRandomEdits) {
    std::vector<const NamedText*> small;
    for (const NamedText& file : all_texts()) {
        if (file.text.size() < 3000) {
            small.push_back(&file);
        }
    }
    std::mt19937 random(20261121);
    std::size_t written = 0;
    std::size_t refused = 0;
    for (int sequence = 0; sequence < 10'000; ++sequence) {
        const NamedText& file = *small[random() % small.size()];
        GJFDocument document(file.text);
        for (std::size_t i = random() % 4 + 1; i > 0; --i) {
            try {
                random_edit(document.job(random() % document.job_count()), random);
            } catch (const GJFParseException&) {
                continue;
            }
        }
        try {
            // The text is compared with the meant jobs before it is given; here the other way round: written again it is the
            // same.
            const std::string text = document.to_text();
            EXPECT_EQ(GJFDocument(text).to_text(), text) << file.name << ", sequence " << sequence;
            EXPECT_EQ(test::written_by_comparison(file.text, document), text) << file.name << ", sequence " << sequence;
            ++written;
        } catch (const GJFParseException& error) {
            ++refused;
            EXPECT_THROW(test::written_by_comparison(file.text, document), GJFParseException)
                << file.name << ": " << error.what();
            EXPECT_EQ(std::string(error.what()).find("otherwise than meant: atom"), std::string::npos)
                << file.name << ": " << error.what();
        }
    }
    std::cout << written << " written, " << refused << " refused\n";
    EXPECT_GT(written, 4 * refused);
}

}  // namespace
}  // namespace quor::input::gaussian
