// userex.gui and exclude.gui on disk, in the headless world: the apply step,
// its switches, its failure rules, and a failure injected at every file step.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>

#include "elimination/elimination_files.h"
#include "elimination/site_file.h"
#include "platform/headless/files.h"
#include "platform/headless/registry.h"
#include "platform/zrutil.h"
#include "settings/context.h"
#include "settings/store.h"

namespace {

namespace fs = std::filesystem;
using zr::headless::FileOp;

constexpr char kOldUserex[] = "# my sites\r\nnews pa # note\r\n\r\n   \r\nnews pa\r\nmy%20site b\r\n# last";
constexpr char kAds[] = "# maker\r\nads.example a\r\n";
constexpr char kAggressive[] = "agg.example x\r\n";

class EliminationFiles : public testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/zr-elim-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        root_ = pattern;
        fs::create_directory(root_ / "Zr");
        zr::headless::map_drive('C', root_.string());
        zr::headless::clear_file_faults();
        zr::headless::registry_clear();
        zr::headless::registry_set_string(kSettingsKey, "proxy_path", "C:\\Zr");
        g_settings.user_sites.entries.clear();
        g_settings.working.ad_list_on = 0;
        g_settings.working.aggressive_elimination = 0;
    }
    void TearDown() override {
        zr::headless::clear_file_faults();
        fs::remove_all(root_);
    }

    fs::path file(const char* name) const { return root_ / "Zr" / name; }
    void put(const char* name, const std::string& bytes) const {
        std::ofstream(file(name), std::ios::binary) << bytes;
    }
    std::optional<std::string> get(const char* name) const {
        std::ifstream in(file(name), std::ios::binary);
        if (!in) return std::nullopt;
        std::ostringstream all;
        all << in.rdbuf();
        return all.str();
    }
    void switches(int site_elimination, int ad, int aggressive) {
        if (site_elimination >= 0)
            zr::headless::registry_set_dword(kSettingsKey, "site_elimination", site_elimination);
        g_settings.working.ad_list_on = static_cast<uint8_t>(ad);
        g_settings.working.aggressive_elimination = static_cast<uint8_t>(aggressive);
    }
    // The old files, then the list read from them with one site added.
    void old_state() {
        put("userex.gui", kOldUserex);
        put("exclude.gui", "stale\r\n");
        put("excad.dat", kAds);
        put("aggressive.dat", kAggressive);
        reload_user_site_list();
        append_site(g_settings.user_sites, SiteEntry{0x10, kSiteEntry, "added site"});
    }

    fs::path root_;
};

const std::string kNewUserex =
    "# my sites\r\nnews ap\r\n\r\n   \r\nnews ap\r\nmy%20site b\r\n# last\r\nadded%20site d\r\n";

TEST_F(EliminationFiles, ApplyKeepsBothKindsOfLinesInPlace) {
    old_state();
    write_elimination_files();
    EXPECT_EQ(get("userex.gui"), kNewUserex);
    reload_user_site_list();
    ASSERT_EQ(g_settings.user_sites.entries.size(), 8u);
    EXPECT_EQ(g_settings.user_sites.entries[5].name, "my site");
    EXPECT_EQ(g_settings.user_sites.entries[6].name, "# last\n");
    EXPECT_FALSE(fs::exists(file("userex.gui.new")));
}

TEST_F(EliminationFiles, MissingOrEmptyFileGivesAnEmptyList) {
    append_site(g_settings.user_sites, SiteEntry{1, kSiteEntry, "x"});
    reload_user_site_list();
    EXPECT_TRUE(g_settings.user_sites.entries.empty());
    put("userex.gui", "");
    reload_user_site_list();
    EXPECT_TRUE(g_settings.user_sites.entries.empty());
    switches(1, 0, 0);
    write_elimination_files();
    EXPECT_EQ(get("userex.gui"), "");
    EXPECT_EQ(get("exclude.gui"), "");
}

struct SwitchRow {
    int site_elimination;  // -1: no value in the registry
    int ad;
    int aggressive;
    std::optional<std::string> exclude;
};

class SwitchTable : public EliminationFiles, public testing::WithParamInterface<SwitchRow> {};

TEST_P(SwitchTable, BuildsExcludeFromTheSwitchedSources) {
    const SwitchRow& row = GetParam();
    old_state();
    switches(row.site_elimination, row.ad, row.aggressive);
    write_elimination_files();
    EXPECT_EQ(get("userex.gui"), kNewUserex);
    EXPECT_EQ(get("exclude.gui"), row.exclude);
}

const std::string kAdLine = "ads.example a\r\n";
const std::string kAggLine = "agg.example x\r\n";

INSTANTIATE_TEST_SUITE_P(Rows, SwitchTable,
                         testing::Values(SwitchRow{0, 0, 0, std::nullopt}, SwitchRow{-1, 0, 1, std::nullopt},
                                         SwitchRow{1, 0, 0, kNewUserex}, SwitchRow{7, 0, 1, kNewUserex},
                                         SwitchRow{0, 1, 0, kAdLine}, SwitchRow{-1, 1, 1, kAdLine + kAggLine},
                                         SwitchRow{1, 1, 0, kNewUserex + kAdLine},
                                         SwitchRow{1, 1, 1, kNewUserex + kAdLine + kAggLine}));

TEST_F(EliminationFiles, NoDataDirectoryMeansNoFileIsTouched) {
    old_state();
    switches(1, 1, 1);
    for (const char* directory : {static_cast<const char*>(""), static_cast<const char*>(nullptr), "long"}) {
        if (!directory) {
            zr::headless::registry_delete_value(kSettingsKey, "proxy_path");
        } else if (std::string(directory) == "long") {
            // "C:\Zr\" plus padding: userex.gui fits 1,024 bytes, aggressive.dat does not.
            std::string path = "C:\\Zr\\" + std::string(1024 - 6 - 12, 'd');
            zr::headless::registry_set_string(kSettingsKey, "proxy_path", path.c_str());
            char buffer[1024];
            ASSERT_TRUE(data_file_path("userex.gui", buffer, sizeof buffer));
        } else {
            zr::headless::registry_set_string(kSettingsKey, "proxy_path", directory);
        }
        write_elimination_files();
        EXPECT_EQ(get("userex.gui"), kOldUserex);
        EXPECT_EQ(get("exclude.gui"), "stale\r\n");
    }
    zr::headless::registry_delete_value(kSettingsKey, "proxy_path");
    reload_user_site_list();
    EXPECT_TRUE(g_settings.user_sites.entries.empty());
}

TEST_F(EliminationFiles, UnwritableUserexStillDeletesExcludeAndCopiesTheOldList) {
    old_state();
    switches(1, 0, 0);
    zr::headless::fail_file_op(FileOp::Create, 1);
    write_elimination_files();
    EXPECT_EQ(get("userex.gui"), kOldUserex);
    EXPECT_EQ(get("exclude.gui"), kOldUserex);
    reload_user_site_list();  // the edit is gone, as after any failed apply
    EXPECT_EQ(g_settings.user_sites.entries.size(), 7u);
}

TEST_F(EliminationFiles, UntickedSiteEliminationThenCancelStaysOff) {
    old_state();
    switches(1, 0, 0);
    // The page writes the value at the click; cancelling reloads only the list.
    write_dword(kSettingsKey, "site_elimination", 0);
    reload_user_site_list();
    EXPECT_EQ(zr::headless::registry_get_dword(kSettingsKey, "site_elimination"), 0u);
    write_elimination_files();
    EXPECT_FALSE(get("exclude.gui").has_value());
}

// exclude.gui after a rebuild that stopped somewhere: the copy of userex.gui
// (or nothing), then each maker list whole or not at all.
bool is_whole_stage(const std::string& exclude, const std::string& userex) {
    for (const std::string& base : {std::string(), userex}) {
        std::string joined = base;
        if (!joined.empty() && joined.back() != '\n') joined += "\r\n";
        for (const std::string& ads : {std::string(), kAdLine}) {
            for (const std::string& aggressive : {std::string(), kAggLine}) {
                std::string merged = ads.empty() && aggressive.empty() ? base : joined + ads + aggressive;
                if (exclude == merged) return true;
            }
        }
    }
    return false;
}

// Every create, write, flush, sync and rename of one apply fails in turn: each
// data file is then wholly old or wholly new, exclude.gui is one of the whole
// stages of its rebuild, no temporary file stays behind, and the next apply
// puts everything right.
TEST_F(EliminationFiles, AFailureAtAnyFileStepLeavesWholeFiles) {
    old_state();
    switches(1, 1, 1);
    write_elimination_files();
    int counts[5];
    for (int op = 0; op < 5; ++op) counts[op] = zr::headless::file_op_count(static_cast<FileOp>(op));
    EXPECT_GT(counts[static_cast<int>(FileOp::Rename)], 3);

    int injected = 0;
    for (int op = 0; op < 5; ++op) {
        for (int nth = 1; nth <= counts[op]; ++nth) {
            SCOPED_TRACE(testing::Message() << "op " << op << " nth " << nth);
            old_state();
            zr::headless::clear_file_faults();
            zr::headless::fail_file_op(static_cast<FileOp>(op), nth);
            write_elimination_files();
            ++injected;
            auto userex = get("userex.gui");
            ASSERT_TRUE(userex == kOldUserex || userex == kNewUserex);
            auto exclude = get("exclude.gui");
            if (exclude) {
                EXPECT_TRUE(is_whole_stage(*exclude, *userex)) << *exclude;
            }
            for (const auto& entry : fs::directory_iterator(root_ / "Zr"))
                EXPECT_NE(entry.path().extension(), ".new") << entry.path();
            zr::headless::clear_file_faults();
            write_elimination_files();
            EXPECT_EQ(get("exclude.gui"), kNewUserex + kAdLine + kAggLine);
        }
    }
    EXPECT_GT(injected, 10);
}

TEST_F(EliminationFiles, MakerMerge) {
    std::string source = file("excad.dat").string();
    std::string dest = file("exclude.gui").string();
    // Absent destination: created.  Absent source: nothing touched.
    put("excad.dat", "# c\r\nads.example a # why\r\n\r\nmore.example\n" + std::string(3000, '#') + "\r\n");
    EXPECT_EQ(copy_exclude_ads(source.data(), dest.data()), 1);
    EXPECT_EQ(get("exclude.gui"), "ads.example a\r\nmore.example \r\n");
    // Kept as it was; a last line without line end gets one; repeats are added again.
    put("exclude.gui", "ads.example a\r\n# mine");
    EXPECT_EQ(copy_aggressive(source.data(), dest.data()), 1);
    EXPECT_EQ(get("exclude.gui"), "ads.example a\r\n# mine\r\nads.example a\r\nmore.example \r\n");
    fs::remove(file("excad.dat"));
    EXPECT_EQ(copy_exclude_ads(source.data(), dest.data()), 0);
    EXPECT_EQ(get("exclude.gui"), "ads.example a\r\n# mine\r\nads.example a\r\nmore.example \r\n");
}

}  // namespace
