// How often a route is interpreted while jobs are read, checked and edited.
#include <gjf/core/check/checker.hpp>
#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/route/interpretation_count.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <string>

#ifndef NDEBUG

namespace quor::input::gaussian {
namespace {

const std::string job_text = "#p b3lyp/6-31g(d) opt=(ts,calcfc) freq\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";

std::string edited(const std::function<void(GJFEditor&)>& edit) {
    GJFDocument document(job_text);
    edit(document.job(0));
    return document.to_text();
}

TEST(Interpretations, AreAsFewAsTheyCanBe) {
    const struct {
        const char* name;
        std::size_t count;
        std::function<void()> work;
    } cases[] = {
        {"reading", 1, [] { GJFParser::parse_string(job_text); }},
        {"check", 1, [] { check_text(job_text); }},
        {"check of two jobs", 2, [] { check_text(job_text + "--Link1--\n" + job_text); }},
        {"document that is not edited", 1, [] { edited([](GJFEditor&) {}); }},
        {"edit of a basis set", 2, [] { edited([](GJFEditor& e) { e.set_model_chemistry_basis("cc-pvdz"); }); }},
        {"edit of an option", 2,
         [] { edited([](GJFEditor& e) {
                  e.ensure_keyword_option("optimize", {"tight", std::nullopt});
              }); }},
        {"edits one after another", 2,
         [] {
             edited([](GJFEditor& e) {
                 e.ensure_parsed_keywords();
                 e.set_method("mp2");
                 e.add_keyword("polar");
                 e.remove_keyword_by_name("freq");
             });
         }},
    };
    for (const auto& c : cases) {
        const std::size_t before = interpreted_routes();
        c.work();
        EXPECT_EQ(interpreted_routes() - before, c.count) << c.name;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

#endif
