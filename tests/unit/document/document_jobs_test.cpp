// Documents of several jobs: what they tell of each, save, and leave alone.
#include <gjf/core/reader/gjf_parser.hpp>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "../../support/files.hpp"
#include "document_edits.hpp"
#include "water.hpp"

namespace quor::input::gaussian::test {
namespace {

TEST(Documents, DoNotBringBackAFileThatIsGone) {
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write("job.gjf", water);
    GJFDocument document = GJFDocument::open(path);
    document.job(0).set_title("ice");
    std::filesystem::remove(path);
    try {
        document.save();
        ADD_FAILURE() << "saved";
    } catch (const GJFParseException& error) {
        EXPECT_EQ(error.what(), "GJF Parse Error: File has changed since it was opened: " + path);
    }
    EXPECT_EQ(quor::test::entries_in(folder.path()), 0U);
    EXPECT_EQ(document.original_text(), water);
    EXPECT_TRUE(document.save({true})) << "unless it is forced";
    EXPECT_EQ(quor::test::bytes_of(path), water_with("Water  title", "ice"));
}

TEST(Documents, TellTheirLayout) {
    GJFDocument document(water);
    document.insert_job(0, GJFParser::parse_string("# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n"));
    const GJFDocument& seen = document;
    EXPECT_EQ(seen.job(0).get_data().title, "t");
    EXPECT_TRUE(seen.layout(0).atoms.empty()) << "a job that was put in has no text of its own";
    EXPECT_EQ(seen.layout(1).charge_line, 9U);
    EXPECT_EQ(seen.layout(1).atoms, (std::vector<std::size_t>{10, 11, 12}));
    EXPECT_THROW(seen.layout(2), GJFParseException);
    EXPECT_THROW(seen.job(2), GJFParseException);
}

TEST(Documents, NameTheJobThatCannotBeWritten) {
    GJFDocument document(water + "--Link1--\n" + bonded);
    document.job(1).remove_keyword_by_name("geom");
    EXPECT_EQ(message_of(document),
              "GJF Parse Error: Job 2: The changed text would be read otherwise than meant: the section 'Connectivity "
              "specifications', which would be read as the section 'Modifications to coordinates'");
    GJFDocument symbolic(water + "--Link1--\n# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 r\n\nr=1.0\n\n");
    symbolic.job(1).translate_atoms({0}, 0, 0, 1);
    EXPECT_EQ(message_of(symbolic), "GJF Parse Error: Job 2: A coordinate of atom 1 is a variable and cannot be moved");
}

TEST(Documents, LeaveJobsThatCannotBeReadAsTheyAre) {
    const std::string broken = "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 zero\n\n";
    const std::string link = "--Link1--\n";
    GJFDocument document(water + link + broken + link + water);
    ASSERT_EQ(document.job_count(), 3U);
    EXPECT_TRUE(document.readable(0));
    EXPECT_FALSE(document.readable(1));
    EXPECT_EQ(document.fault(0).message, "");
    const std::string reason = GJFParseException(document.fault(1).message).what();
    EXPECT_EQ(line_and_column(document.original_text(), document.fault(1).place.begin).line,
              static_cast<std::size_t>(std::count(water.begin(), water.end(), '\n')) + 7);
    EXPECT_EQ(document.fault(1).place.in(document.original_text()), "He 0.0 zero");
    EXPECT_EQ(document.to_text(), document.original_text());
    const GJFEditor helium(GJFParser::parse_string("# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n"));
    const std::pair<const char*, std::function<void()>> refused[] = {
        {"its editor", [&] { document.job(1); }},
        {"another editor", [&] { document.set_job(1, helium); }},
    };
    for (const auto& [name, action] : refused) {
        try {
            action();
            ADD_FAILURE() << name;
        } catch (const GJFParseException& error) {
            EXPECT_EQ(std::string(error.what()), "GJF Parse Error: Job 2: " + reason) << name;
        }
    }
    EXPECT_THROW(document.readable(3), GJFParseException);
    EXPECT_THROW(document.fault(3), GJFParseException);
    document.job(2).set_title("third");
    EXPECT_EQ(document.to_text(), water + link + broken + link + water_with("Water  title", "third"));
    document.remove_job(0);
    EXPECT_EQ(document.to_text(), broken + link + water_with("Water  title", "third"));
    document.insert_job(0, helium.get_data());
    EXPECT_TRUE(document.readable(0));
    EXPECT_EQ(document.fault(0).message, "");
    EXPECT_FALSE(document.readable(1));
    document.remove_job(1);
    EXPECT_EQ(GJFDocument(document.to_text()).job_count(), 2U);
    EXPECT_THROW(GJFDocument(broken + link + broken), GJFParseException);
}

TEST(Documents, SaveAroundJobsThatCannotBeRead) {
    const std::string broken = "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 zero\n\n--Link1--\n";
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write("jobs.gjf", broken + water);
    GJFDocument document = GJFDocument::open(path);
    GJFEditor& job = document.job(1);
    for (const char* title : {"one\nand more", "two"}) {
        job.set_title(title);
        EXPECT_TRUE(document.save());
        EXPECT_EQ(quor::test::bytes_of(path), broken + water_with("Water  title", title));
        EXPECT_EQ(line_and_column(document.original_text(), document.fault(0).place.begin).line, 6U);
    }
}

TEST(Documents, HoldSeveralJobs) {
    GJFDocument document(water + "--Link1--\n" + water);
    ASSERT_EQ(document.job_count(), 2U);
    document.job(1).set_title("second");
    EXPECT_EQ(document.to_text(), water + "--Link1--\n" + water_with("Water  title", "second"));
    EXPECT_THROW(document.job(2), GJFParseException);
    GJFDocument first(water + "--Link1--\n" + water);
    first.remove_job(1);
    EXPECT_EQ(first.to_text(), water);
    GJFDocument second(water + "--Link1--\n" + water_with("Water", "Ice"));
    second.remove_job(0);
    EXPECT_EQ(second.to_text(), water_with("Water", "Ice"));
    EXPECT_THROW(second.remove_job(0), GJFParseException);
    GJFDocument more(water);
    const GJFData helium = GJFParser::parse_string("# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n");
    more.insert_job(1, helium);
    EXPECT_EQ(more.to_text().substr(0, water.size() + 10), water + "--Link1--\n");
    EXPECT_EQ(GJFDocument(more.to_text()).job_count(), 2U);
    EXPECT_THROW(more.insert_job(0, GJFParser::parse_string("# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 0.9\n\n")), GJFParseException);
}

}  // namespace
}  // namespace quor::input::gaussian::test
