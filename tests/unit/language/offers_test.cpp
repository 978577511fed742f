// What may be written at a place, and what it takes the place of.
#include <gjf/core/language/offers.hpp>

#include "marked_text.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using namespace quor::input::gaussian;

struct OfferRow {
    std::string text;
    const char* offered;   // one of the offers; empty where nothing is offered at all
    const char* replaced;  // what it takes the place of
};

TEST(Offers, HoldWhatMayStandThere) {
    const std::string rest = "\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\n\n";
    const OfferRow rows[] = {
        {"# hf/sto-3g fre|" + rest, "freq", "fre"},
        {"# hf/sto-3g fr|eq" + rest, "freq", "freq"},
        {"# b3l|" + rest, "b3lyp", "b3l"},
        {"# b3lyp/def2|" + rest, "def2svp", "def2"},
        {"# b3lyp/6-31|G" + rest, "6-31g", "6-31G"},
        {"# hf opt=calc|" + rest, "calcfc", "calc"},
        {"# hf opt=(ts,|" + rest, "calcfc", ""},
        {"# hf opt=(ts,noei|gen) freq" + rest, "noeigentest", "noeigen"},
        {"# hf opt=calc |" + rest, "", ""},
        {"# hf opt=calcfc fr|" + rest, "freq", "fr"},
        {"# hf opt=calc |scrf" + rest, "", ""},
        {"# hf opt= |" + rest, "calcfc", ""},
        {"# hf opt=(ts |" + rest, "calcfc", ""},
        {"# hf opt=(ts |) freq" + rest, "calcfc", ""},
        {"# hf opt=(ts) |" + rest, "", ""},
        {"# hf scrf=(smd,solvent=wat|)" + rest, "water", "wat"},
        {"# hf scrf=(smd,solvent=water |" + rest, "smd", ""},
        {"# hf opt=(ts,\n  noei|" + rest, "noeigentest", "noei"},
        {"# hf opt=(ts,\n|" + rest, "calcfc", ""},
        {"%ch|\n# hf" + rest, "chk=", "ch"},
        {"%|\n# hf" + rest, "mem=", ""},
        {"%chk=a\n# hf" + rest + "--Link1--\n%oldchk=|\n# hf geom=check\n\nt\n\n0 1\n\n", "a.chk", ""},
        {"%mem=4GB\n# hf" + rest + "--Link1--\n%mem=|\n# hf geom=check\n\nt\n\n0 1\n\n", "4GB", ""},
        {"%mem=16|\n# hf" + rest, "16GB", "16"},
        {"%mem= 16|G\n# hf" + rest, "16MB", "16G"},
        {"%rwf=a.rwf\n# hf" + rest + "--Link1--\n%rwf=x|\n# hf geom=check\n\nt\n\n0 1\n\n", "a.rwf", "x"},
        {"%nprocshared=8\n# hf" + rest + "--Link1--\n%nproc=|\n# hf geom=check\n\nt\n\n0 1\n\n", "8", ""},
        {"# hf opt=modredundant" + rest + "B 1 |\n\n", "2", ""},
        {"# hf/gen" + rest + "O| 0\nsto-3g\n****\n\n", "H", "O"},
        {"# hf opt\n\nfr|\n\n0 1\nO 0 0 0\n\n", "", ""},
        {"# hf ! fre|" + rest, "", ""},
        {"# hf opt\n\nt\n\n0 1\nO 0 0 |0\n\n", "", ""},
        {"# hf qqq|" + rest, "", "qqq"},
        {"# hf opt=qqq|" + rest, "", "qqq"},
        {"%rwf=|\n# hf" + rest, "", ""},
        {"%mem=|\n# hf" + rest, "", ""},
        {"%mem=x|\n# hf" + rest, "", ""},
        {"%save=|\n# hf" + rest, "", ""},
        {"%none=1|\n# hf" + rest, "", ""},
        {"%chk=a|\n# hf" + rest, "", ""},
        {"|", "", ""},
        {"\n\n|", "", ""},
    };
    for (const OfferRow& row : rows) {
        const MarkedFile at(row.text);
        const Offers found = offers_at(at.file, at.offset);
        const std::string offered = row.offered;
        if (offered.empty()) {
            EXPECT_TRUE(found.offers.empty()) << row.text << found.offers.front().text;
            continue;
        }
        EXPECT_EQ(found.replaced.in(at.file.text()), row.replaced) << row.text;
        EXPECT_TRUE(
            std::any_of(found.offers.begin(), found.offers.end(), [&](const Offer& offer) { return offer.text == offered; }))
            << row.text << " offers " << found.offers.size();
    }
}

TEST(Offers, PutBasisSetsThatLackAnElementLast) {
    const MarkedFile at("# hf/6-31g|\n\nt\n\n0 1\nI 0 0 0\n\n");
    const Offers found = offers_at(at.file, at.offset);
    const auto lacking =
        std::find_if(found.offers.begin(), found.offers.end(), [](const Offer& offer) { return offer.text == "6-31g"; });
    ASSERT_NE(lacking, found.offers.end());
    EXPECT_EQ(lacking->rank, 1);
    EXPECT_EQ(lacking->detail, "basis set, lacks I");
}

}  // namespace
