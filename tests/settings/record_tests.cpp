// The host record and the working copy: what moves, what never moves.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "settings/context.h"
#include "settings/record.h"
#include "settings/sheet_internal.h"

namespace {

constexpr size_t kSlack = 64;  // bytes a host may keep behind the record

// A host record inside a larger buffer, every byte set to `fill`.
struct HostBuffer {
    std::vector<unsigned char> bytes;
    explicit HostBuffer(unsigned char fill) : bytes(sizeof(settings_struct) + kSlack, fill) {}
    settings_struct* record() { return reinterpret_cast<settings_struct*>(bytes.data()); }
};

void fill_distinct(settings_struct* r) {
    unsigned char* p = reinterpret_cast<unsigned char*>(r);
    for (size_t i = 0; i < sizeof *r; ++i) p[i] = static_cast<unsigned char>(i * 7 + 3);
    // Strings need a NUL inside their field.
    std::strcpy(r->skin_path, "C:\\Skins\\blue.zsk");
    std::strcpy(r->host_text_145, "host text");
    std::strcpy(r->dialup_entry, "My ISP");
    std::strcpy(r->conn_text_317, "proxy.example");
}

// Offsets of bytes that are never copied: apply_marker and the padding.
bool never_copied(size_t offset) {
    auto in = [&](size_t at, size_t size) { return offset >= at && offset < at + size; };
    return in(49, 3) || in(58, 2) || in(60, 4) || in(846, 2) || in(1114, 2);
}

// Offsets that belong to a string field but lie behind its NUL.
bool behind_string_end(const settings_struct& r, size_t offset) {
    const struct { size_t at; const char* text; } fields[] = {
        {65, r.skin_path}, {325, r.host_text_145}, {585, r.dialup_entry}, {854, r.conn_text_317}};
    for (const auto& f : fields) {
        const size_t end = f.at + std::strlen(f.text) + 1;
        if (offset >= end && offset < f.at + 260) return true;
    }
    return false;
}

TEST(Record, RoundTripMovesEveryFieldAndNothingElse) {
    HostBuffer source(0);
    fill_distinct(source.record());
    copy_in(source.record());

    HostBuffer target(0xA5);
    copy_out(target.record());

    const unsigned char* from = source.bytes.data();
    const unsigned char* to = target.bytes.data();
    for (size_t i = 0; i < sizeof(settings_struct); ++i) {
        if (never_copied(i) || behind_string_end(*source.record(), i)) {
            EXPECT_EQ(to[i], 0xA5) << "byte " << i << " should have been left alone";
        } else {
            EXPECT_EQ(to[i], from[i]) << "byte " << i << " was not copied";
        }
    }
    for (size_t i = sizeof(settings_struct); i < target.bytes.size(); ++i)
        ASSERT_EQ(to[i], 0xA5) << "byte " << i << " past the record was written";
}

TEST(Record, StringsMoveUpToTheirNulOnly) {
    HostBuffer host(0);
    std::memcpy(host.record()->skin_path, "abc\0XYZXYZ", 10);
    std::memset(g_settings.working.skin_path, 'w', sizeof g_settings.working.skin_path);

    copy_in(host.record());

    EXPECT_STREQ(g_settings.working.skin_path, "abc");
    EXPECT_EQ(g_settings.working.skin_path[4], 'w');  // behind the NUL: as it was
    EXPECT_EQ(g_settings.working.skin_path[259], 'w');
}

TEST(Record, StringWithoutNulIsCutAtTheFieldEnd) {
    HostBuffer host(0);
    std::memset(host.record()->dialup_entry, 'x', 260);  // a host that broke the contract
    host.record()->host_field_34d = 0x77;                // the byte right behind the field

    copy_in(host.record());

    EXPECT_EQ(std::strlen(g_settings.working.dialup_entry), 259u);
    EXPECT_EQ(g_settings.working.host_field_34d, 0x77);
}

TEST(Record, ApplyMarkerIsNeverCopied) {
    HostBuffer host(0);
    host.record()->apply_marker = 12345;
    g_settings.working.apply_marker = 0;
    copy_in(host.record());
    EXPECT_EQ(g_settings.working.apply_marker, 0u);

    g_settings.working.apply_marker = 99;
    copy_out(host.record());
    EXPECT_EQ(host.record()->apply_marker, 12345u);
}

// settings_apply: only the first call after a change does the work.
TEST(Apply, OnlyTheFirstCallAfterAChangeCommits) {
    HostBuffer host(0);
    host.record()->cache_size_mb = 100;
    host.record()->apply_marker = 7;
    copy_in(host.record());

    settings_apply(host.record());  // nothing changed yet
    EXPECT_EQ(host.record()->apply_marker, 7u);

    g_settings.working.cache_size_mb = 300;
    g_settings.changed = 1;
    g_settings.tcp_changed = 1;
    settings_apply(host.record());
    EXPECT_EQ(host.record()->cache_size_mb, 300u);
    EXPECT_EQ(host.record()->apply_marker, 2u);
    EXPECT_EQ(g_settings.changed, 0u);
    EXPECT_EQ(g_settings.tcp_changed, 0);

    // The second page answering the same press finds nothing to do.
    host.record()->apply_marker = 5;
    g_settings.working.cache_size_mb = 400;
    settings_apply(host.record());
    EXPECT_EQ(host.record()->cache_size_mb, 300u);
    EXPECT_EQ(host.record()->apply_marker, 5u);
}

TEST(Cancel, RestoresTheWorkingCopyIncludingChangeMarkers) {
    HostBuffer host(0);
    host.record()->cache_size_mb = 250;
    host.record()->site_list_changed = 0;
    host.record()->aggressive_changed = 0;
    copy_in(host.record());
    g_settings.working.cache_size_mb = 999;
    g_settings.working.site_list_changed = 1;
    g_settings.working.aggressive_changed = 1;
    std::strcpy(g_settings.working.skin_path, "C:\\other.zsk");
    g_settings.changed = 1;

    settings_cancel(host.record());

    EXPECT_EQ(g_settings.working.cache_size_mb, 250u);
    EXPECT_EQ(g_settings.working.site_list_changed, 0);
    EXPECT_EQ(g_settings.working.aggressive_changed, 0);
    EXPECT_STREQ(g_settings.working.skin_path, "");
    EXPECT_EQ(g_settings.changed, 1u);  // cancel leaves the flag alone
    EXPECT_EQ(host.record()->cache_size_mb, 250u);
    g_settings.changed = 0;
}

TEST(SheetTemplate, ContextHelpIsClearedInBothTemplateForms) {
    // Standard template: style is the first DWORD.
    unsigned char standard[24] = {};
    const DWORD style = WS_POPUP | WS_CAPTION | DS_CONTEXTHELP | DS_MODALFRAME;
    std::memcpy(standard, &style, 4);
    clear_context_help(standard);
    DWORD after;
    std::memcpy(&after, standard, 4);
    EXPECT_EQ(after, style & ~static_cast<DWORD>(DS_CONTEXTHELP));

    // Extended template: dlgVer 1, signature 0xFFFF, helpID, exStyle, style at 12.
    unsigned char extended[32] = {};
    const WORD version = 1, signature = 0xFFFF;
    std::memcpy(extended, &version, 2);
    std::memcpy(extended + 2, &signature, 2);
    const DWORD ex_style = DS_CONTEXTHELP;  // must not be taken for the style
    std::memcpy(extended + 8, &ex_style, 4);
    std::memcpy(extended + 12, &style, 4);
    clear_context_help(extended);
    std::memcpy(&after, extended + 12, 4);
    EXPECT_EQ(after, style & ~static_cast<DWORD>(DS_CONTEXTHELP));
    std::memcpy(&after, extended + 8, 4);
    EXPECT_EQ(after, ex_style);
}

}  // namespace
