// What each stretch of a job file is taken for.
#include <gjf/core/language/job_tokens.hpp>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace quor::input::gaussian;

struct TokensRow {
    const char* text;
    const char* tokens;
};

const char* name_of(TokenRole role) {
    constexpr const char* names[] = {"separator", "comment",      "link0 key", "link0 value", "head",       "method",
                                     "basis",     "keyword",      "option",    "value",       "route word", "title",
                                     "charge",    "multiplicity", "label",     "freeze",      "layer",      "number",
                                     "atom",      "variable",     "element",   "word"};
    return names[static_cast<std::size_t>(role)];
}

std::string tokens_of(const std::string& text, Span stretch) {
    const JobFile file("t.gjf", text);
    std::string told;
    for (const JobToken& token : tokens_in(file, stretch)) {
        told += std::string(name_of(token.role)) + (token.number > 0 ? std::to_string(token.number) : "") + ":" +
                std::string(token.place.in(text)) + "|";
    }
    return told;
}

std::string route_of(const std::string& route) {
    return tokens_of(route + "\n\nt\n\n0 1\nH 0 0 0\n\n", span_between(0, route.size()));
}

TEST(JobTokens, TellWhatTheWordsOfARouteAre) {
    const TokensRow rows[] = {
        {"# hf/sto-3g", "head:#|method:hf|basis:sto-3g|"},
        {"#p b3lyp/6-31g(d,p) opt", "head:#p|method:b3lyp|basis:6-31g(d,p)|keyword:opt|"},
        {"#p ub3lyp 6-31g* freq=raman", "head:#p|method:ub3lyp|basis:6-31g*|keyword:freq|option:raman|"},
        {"# opt=(calcfc,maxcycles=30) hf", "head:#|keyword:opt|option:calcfc|option:maxcycles|value:30|method:hf|"},
        {"# hf/sto-3g opt(ts,\n  noeigen)", "head:#|method:hf|basis:sto-3g|keyword:opt|option:ts|option:noeigen|"},
        {"# mp2=full/cc-pvdz", "head:#|method:mp2|option:full|basis:cc-pvdz|"},
        {"# ccsd(t)/gen", "head:#|method:ccsd(t)|basis:gen|"},
        {"# mp2/6-31g(d)//hf/sto-3g", "head:#|method:mp2|basis:6-31g(d)|method:hf|basis:sto-3g|"},
        {"# oniom(b3lyp/6-31g(d):uff) opt", "head:#|keyword:oniom|method:b3lyp|basis:6-31g(d)|method:uff|keyword:opt|"},
        {"# hf/sto-3g basiss", "head:#|method:hf|basis:sto-3g|route word:basiss|"},
        {"# b3lpy/6-31g", "head:#|route word:b3lpy|basis:6-31g|"},
        {"# hf/sto-3g scf=xqcx", "head:#|method:hf|basis:sto-3g|keyword:scf|option:xqcx|"},
        {"# hf/sto-3g ! rest", "head:#|method:hf|basis:sto-3g|comment:! rest|"},
        {"# pm6", "head:#|method:pm6|"},
        {"#", "head:#|"},
        {"# iop(3/33=1,6/7=3) hf", "head:#|keyword:iop|option:3/33|value:1|option:6/7|value:3|method:hf|"},
        {"# hf basis=6-31g", "head:#|method:hf|keyword:basis|basis:6-31g|"},
        {"# td=(nstates=3)/gen b3lyp", "head:#|keyword:td|option:nstates|value:3|basis:gen|method:b3lyp|"},
        {"# oniom(hf/sto-3g:pm6)=embedcharge", "head:#|keyword:oniom|method:hf|basis:sto-3g|method:pm6|option:embedcharge|"},
        {"# hf/(", "head:#|method:hf|route word:(|"},
    };
    for (const TokensRow& row : rows) {
        EXPECT_EQ(route_of(row.text), row.tokens) << row.text;
    }
}

TEST(JobTokens, TellWhatStandsInAJob) {
    const std::string head = "# hf/sto-3g";
    const TokensRow rows[] = {
        {"\n\nt # opt ! no\n\n0 1\nH 0 0 0\n\n",
         "title:t # opt ! no|charge:0|multiplicity:1|label1:H|number:0|number:0|number:0|"},
        {"\n\nt\n\n-1,2 ! pair\nH -1 0. 0. r ! one\nO 0.0 0 -r L H 1 0.7\n r 0.96\n\n",
         "title:t|charge:-1|multiplicity:2|comment:! pair|label1:H|freeze:-1|number:0.|number:0.|variable:r|comment:! one|"
         "label2:O|number:0.0|number:0|variable:r|layer:L|element:H|atom1:1|number:0.7|variable:r|number:0.96|"},
        {"\n\nt\n\n0 1\nO\nH 1 r\nH 1 r 2 -a\n\nr=0.96 S 3 0.1\na 104.5\n\n",
         "title:t|charge:0|multiplicity:1|label1:O|label2:H|atom1:1|variable:r|label3:H|atom1:1|variable:r|atom2:2|variable:"
         "a|"
         "variable:r|number:0.96|variable:S|number:3|number:0.1|variable:a|number:104.5|"},
        {" opt=modredundant\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\n\nB 1 2 F ! bond\n\n",
         "keyword:opt|option:modredundant|title:t|charge:0|multiplicity:1|label1:O|number:0|number:0|number:0|label2:H|"
         "number:0|"
         "number:0|number:1|word:B|atom1:1|atom2:2|word:F|comment:! bond|"},
        {"\n\nt\n\n0 1\nH 0 0 0\n\n--link1--\n%chk=a.chk ! b\n%mem=1GB\n# hf\n\n",
         "title:t|charge:0|multiplicity:1|label1:H|number:0|number:0|number:0|separator:--link1--|link0 key:chk|"
         "link0 value:a.chk|comment:! b|link0 key:mem|link0 value:1GB|head:#|method:hf|"},
        {"", ""},
        {"\n\n", ""},
    };
    for (const TokensRow& row : rows) {
        const std::string text = head + row.text;
        EXPECT_EQ(tokens_of(text, span_between(0, text.size())), "head:#|method:hf|basis:sto-3g|" + std::string(row.tokens))
            << row.text;
    }
}

}  // namespace
