// The userex.gui line format: reading, writing, and the round trip.
#include <gtest/gtest.h>

#include <string>

#include "elimination/site_codec.h"

namespace {

std::string round_trip(const std::string& text) { return format_site_list(parse_site_text(text)); }

struct LineCase {
    const char* line;
    uint32_t kind;
    uint32_t flags;
    const char* name;
    const char* written;  // what the file holds after a rewrite
};

class ReadLine : public testing::TestWithParam<LineCase> {};

TEST_P(ReadLine, GivesOneEntryAndItsWrittenForm) {
    const LineCase& c = GetParam();
    auto entries = parse_site_text(std::string(c.line) + "\r\n");
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].kind, c.kind);
    EXPECT_EQ(entries[0].flags, c.flags);
    EXPECT_EQ(entries[0].name, c.name);
    EXPECT_EQ(format_site_list(entries), std::string(c.written) + "\r\n");
}

INSTANTIATE_TEST_SUITE_P(Lines, ReadLine,
                         testing::Values(
                             // flags, their order and letter case
                             LineCase{"news pa", kSiteEntry, 0x81, "news", "news ap"},
                             LineCase{"news P", kSiteEntry, 0x20000, "news", "news P"},
                             LineCase{"news zz9", kSiteEntry, 0, "news", "news "},
                             LineCase{"news pp", kSiteEntry, 0x1, "news", "news p"},
                             LineCase{"news", kSiteEntry, 0, "news", "news "},
                             LineCase{"s SCNLMAXGDVRBPscnlmxgdvrpbao", kSiteEntry, 0x3FFF1FFF, "s",
                                      "s oabprvdgxmlncsPBRVDGXAMLNCS"},
                             // words, white space, comments
                             LineCase{"news pa third", kSiteEntry, 0x81, "news", "news ap"},
                             LineCase{"news pa # note", kSiteEntry, 0x81, "news", "news ap"},
                             LineCase{"news#pa", kSiteEntry, 0, "news", "news "},
                             LineCase{" \t news\t\vd \f", kSiteEntry, 0x10, "news", "news d"},
                             // "%20"
                             LineCase{"my%20news p", kSiteEntry, 0x1, "my news", "my%20news p"},
                             LineCase{"%2020", kSiteEntry, 0, " 20", "%2020 "},
                             LineCase{"100%25%2", kSiteEntry, 0, "100%25%2", "100%25%2 "},
                             LineCase{"%%2020", kSiteEntry, 0, "% 20", "%%2020 "},
                             // kept lines
                             LineCase{"", kKeptLine, 0, "\n", ""},
                             LineCase{"   \t", kKeptLine, 0, "   \t\n", "   \t"},
                             LineCase{"# news pa", kKeptLine, 0, "# news pa\n", "# news pa"},
                             LineCase{"  #", kKeptLine, 0, "  #\n", "  #"}));

TEST(DecodeSpaces, ScansFromTheLeftWithoutOverlap) {
    EXPECT_EQ(decode_spaces("a%20b%20%20c"), "a b  c");
    EXPECT_EQ(decode_spaces("%2%20"), "%2 ");
    EXPECT_EQ(decode_spaces("%20"), " ");
    EXPECT_EQ(decode_spaces(""), "");
}

TEST(ReadFile, KeepsBothKindsOfLinesInPlaceAndDuplicates) {
    const std::string text = "# head\r\nnews pa\r\n\r\nNEWS b\nnews pa\n   \r\nlast";
    auto entries = parse_site_text(text);
    ASSERT_EQ(entries.size(), 7u);
    EXPECT_EQ(entries[0].name, "# head\n");
    EXPECT_EQ(entries[2].name, "\n");
    EXPECT_EQ(entries[3].name, "NEWS");
    EXPECT_EQ(entries[4].name, "news");
    EXPECT_EQ(entries[5].name, "   \n");
    EXPECT_EQ(entries[6].kind, kSiteEntry);
    EXPECT_EQ(round_trip(text), "# head\r\nnews ap\r\n\r\nNEWS b\r\nnews ap\r\n   \r\nlast \r\n");
}

TEST(ReadFile, EmptyAndLineEnds) {
    EXPECT_TRUE(parse_site_text("").empty());
    EXPECT_EQ(format_site_list({}), "");
    // CR belongs to the line end only right before LF.
    auto entries = parse_site_text("a\rb p\r\n \r\r\n \r");
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].name, "a");  // CR is white space inside a line
    EXPECT_EQ(entries[0].flags, 0x2u);
    EXPECT_EQ(entries[1].name, " \r\n");
    EXPECT_EQ(entries[2].name, " \r");
    EXPECT_EQ(format_site_list(entries), "a b\r\n \r\r\n \r");
}

TEST(ReadFile, StopsAtCtrlZ) {
    auto entries = parse_site_text(
        "news p\r\n\x1a"
        "after b\r\n");
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].name, "news");
}

TEST(WriteFile, KeptLastLineWithoutLineEndGetsOneWhenEntriesFollow) {
    auto entries = parse_site_text("news p\r\n# tail");
    EXPECT_EQ(format_site_list(entries), "news p\r\n# tail");
    entries.push_back(SiteEntry{0x80, kSiteEntry, "ads"});
    entries.push_back(SiteEntry{0, kSiteEntry, "more"});
    EXPECT_EQ(format_site_list(entries), "news p\r\n# tail\r\nads a\r\nmore \r\n");
    EXPECT_EQ(parse_site_text(format_site_list(entries)).size(), 4u);
}

TEST(OverLongLines, AreReadWholeAndGiveOnlySitesThatFitTheFormat) {
    const std::string at_limit(kMaxLineLength - 2, 'x');  // "x... p" is 2,046 characters
    auto fits = parse_site_text(at_limit + " p # " + std::string(3000, 'c') + "\r\n");
    ASSERT_EQ(fits.size(), 1u);
    EXPECT_EQ(fits[0].kind, kSiteEntry);
    EXPECT_EQ(format_site_list(fits), at_limit + " p\r\n");

    // One letter more and the written form would be over-long: kept whole.
    const std::string too_long = at_limit + " pa";
    auto kept = parse_site_text(too_long + "\r\n");
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[0].kind, kKeptLine);
    EXPECT_EQ(format_site_list(kept), too_long + "\r\n");
    // A name alone that fills the line: its written form adds a space.
    EXPECT_EQ(parse_site_text(std::string(kMaxLineLength, 'n'))[0].kind, kKeptLine);

    // A comment whose tail, cut into 2,047-character pieces, would look like a site.
    std::string comment(kLinePiece, ' ');  // built in place: GCC 12 (i686, -O2) misreads "#" + string
    comment[0] = '#';
    comment += "evil.example p";
    for (const char* end : {"\r\n", "\n"}) {
        std::string text = "a p\r\n" + comment + end + "b d\r\n";
        auto entries = parse_site_text(text);
        ASSERT_EQ(entries.size(), 3u);
        EXPECT_EQ(entries[1].name, comment + "\n");
        EXPECT_EQ(round_trip(text), "a p\r\n" + comment + "\r\nb d\r\n");
    }
}

TEST(Streaming, BlockBoundariesDoNotChangeTheResult) {
    const std::string text = "# c\r\nnews pa\r\n\r\nmy%20site b # x\r\n \x1a tail";
    auto whole = parse_site_text(text);
    for (size_t block = 1; block <= text.size(); ++block) {
        SiteReadState state;
        std::vector<SiteEntry> out;
        for (size_t at = 0; at < text.size(); at += block)
            feed_site_text(state, text.data() + at, std::min(block, text.size() - at), out);
        finish_site_text(state, out);
        ASSERT_EQ(format_site_list(out), format_site_list(whole)) << "block " << block;
        ASSERT_EQ(out.size(), whole.size());
    }
}

TEST(ListOperations, AppendReplaceRemoveVisit) {
    UserSiteList list;
    append_site(list, {1, kSiteEntry, "a"});
    append_site(list, {0, kKeptLine, "#\n"});
    append_site(list, {2, kSiteEntry, "b"});
    EXPECT_TRUE(replace_site(list, 0, {0x81, kSiteEntry, "a"}));
    EXPECT_FALSE(replace_site(list, 3, {}));
    EXPECT_TRUE(remove_site(list, 1));
    EXPECT_FALSE(remove_site(list, 2));
    std::string seen;
    visit_sites(list, [&](const SiteEntry& e, size_t i) {
        seen += e.name + std::to_string(i) + std::to_string(e.flags) + ";";
        return true;
    });
    EXPECT_EQ(seen, "a0129;b12;");
}

}  // namespace
