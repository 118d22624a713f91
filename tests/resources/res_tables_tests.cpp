// The generated resource tables hold what the pages rely on: every template
// with the controls each page drives, of the right class and kind, grouped
// the way the pages expect, and every string, sized for its buffer.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "platform/restable.h"

namespace {

using zr::res::ControlTemplate;
using zr::res::DialogTemplate;

constexpr uint32_t kWsPopup = 0x80000000, kWsChild = 0x40000000, kWsVisible = 0x10000000;
constexpr uint32_t kWsCaption = 0x00C00000, kWsGroup = 0x00020000, kWsTabstop = 0x00010000;
constexpr uint32_t kDsSetFont = 0x40, kDsModalFrame = 0x80;
constexpr uint32_t kBsPush = 0, kBsDefPush = 1, kBsAutoCheck = 3, kBs3State = 5, kBsGroupBox = 7,
                   kBsAutoRadio = 9;
constexpr uint32_t kLbsNotify = 0x1, kLbsMultipleSel = 0x8, kLbsExtendedSel = 0x800;
constexpr uint32_t kCbsDropDownList = 0x3;
constexpr uint32_t kUdsSetBuddyInt = 0x2, kUdsAlignRight = 0x4, kUdsAutoBuddy = 0x10, kUdsNoThousands = 0x80;
constexpr uint32_t kLvsReport = 0x1, kLvsTypeMask = 0x3, kLvsSort = 0x30, kLvsShareImageLists = 0x40,
                   kLvsEditLabels = 0x200;

enum class Kind { Push, DefPush, Check, Check3, Radio, Text, Edit, List, Combo, Spin, Track, ListView };

struct Need {
    int id;
    Kind kind;
};

struct PageNeeds {
    int dialog;
    std::vector<Need> controls;
};

const PageNeeds kNeeds[] = {
    {2000,
     {{300, Kind::Check},
      {301, Kind::Text},
      {302, Kind::Text},
      {303, Kind::Track},
      {304, Kind::Text},
      {305, Kind::Push},
      {306, Kind::Text},
      {310, Kind::Text},
      {311, Kind::Push},
      {312, Kind::Text}}},
    {2002,
     {{303, Kind::Radio},
      {304, Kind::Radio},
      {305, Kind::Radio},
      {306, Kind::Radio},
      {307, Kind::Radio},
      {308, Kind::Check},
      {309, Kind::Check},
      {310, Kind::Check},
      {311, Kind::Edit},
      {312, Kind::Check},
      {313, Kind::Check},
      {314, Kind::Check},
      {315, Kind::Combo},
      {316, Kind::Check},
      {317, Kind::Edit},
      {318, Kind::Edit},
      {252, Kind::Text},
      {253, Kind::Text},
      {254, Kind::Text}}},
    {2004,
     {{300, Kind::Radio},
      {301, Kind::Radio},
      {320, Kind::Radio},
      {321, Kind::Radio},
      {302, Kind::Push},
      {303, Kind::Check},
      {304, Kind::Push}}},
    {2005,
     {{300, Kind::List},
      {301, Kind::Check},
      {302, Kind::Check},
      {303, Kind::Check},
      {304, Kind::Check},
      {305, Kind::Push},
      {306, Kind::Push},
      {307, Kind::Push},
      {308, Kind::Push},
      {309, Kind::Check},
      {310, Kind::Radio},
      {311, Kind::Radio},
      {312, Kind::Check}}},
    {2007, {{300, Kind::Edit}, {302, Kind::Edit}, {251, Kind::Text}, {1, Kind::DefPush}, {2, Kind::Push}}},
    {2015,
     {{306, Kind::Edit},
      {307, Kind::Spin},
      {309, Kind::Edit},
      {310, Kind::Spin},
      {312, Kind::Edit},
      {313, Kind::Spin},
      {314, Kind::Check},
      {315, Kind::Check},
      {318, Kind::Edit},
      {319, Kind::Radio},
      {320, Kind::Radio},
      {321, Kind::Radio},
      {322, Kind::Radio},
      {323, Kind::Radio},
      {325, Kind::Radio},
      {1, Kind::DefPush},
      {2, Kind::Push}}},
    {2018,
     {{301, Kind::Edit},  {302, Kind::Spin},  {303, Kind::Edit},  {304, Kind::Spin},  {305, Kind::Check},
      {306, Kind::Check}, {307, Kind::Check}, {321, Kind::Check}, {322, Kind::Check}, {323, Kind::Check},
      {324, Kind::List},  {325, Kind::List},  {326, Kind::List},  {327, Kind::Push},  {328, Kind::Push},
      {329, Kind::Push},  {250, Kind::Text},  {251, Kind::Text},  {252, Kind::Text},  {253, Kind::Text},
      {254, Kind::Text}}},
    {2020,
     {{300, Kind::ListView},
      {301, Kind::Push},
      {302, Kind::Push},
      {306, Kind::Edit},
      {307, Kind::Spin},
      {308, Kind::Edit},
      {309, Kind::Spin},
      {310, Kind::Check3},
      {311, Kind::Check3},
      {312, Kind::Radio},
      {313, Kind::Radio},
      {250, Kind::Text},
      {251, Kind::Text},
      {252, Kind::Text},
      {253, Kind::Text},
      {254, Kind::Text},
      {255, Kind::Text}}},
    {2021,
     {{300, Kind::Edit},
      {301, Kind::Spin},
      {302, Kind::Edit},
      {303, Kind::Spin},
      {304, Kind::Radio},
      {305, Kind::Radio},
      {308, Kind::List},
      {309, Kind::Edit},
      {310, Kind::Push},
      {311, Kind::Push},
      {312, Kind::Check}}},
};

// Radio buttons that must form one group, in tab order.
const std::vector<std::pair<int, std::vector<int>>> kRadioGroups = {
    {2002, {303, 304, 305}},
    {2002, {306, 307}},
    {2004, {300, 301, 320, 321}},
    {2005, {310, 311}},
    {2015, {319, 320, 321, 322, 323, 325}},
    {2020, {312, 313}},
    {2021, {304, 305}},
};

const ControlTemplate* find_control(const DialogTemplate& d, int id) {
    for (size_t i = 0; i < d.control_count; ++i)
        if (d.controls[i].id == id) return &d.controls[i];
    return nullptr;
}

int index_of(const DialogTemplate& d, int id) {
    for (size_t i = 0; i < d.control_count; ++i)
        if (d.controls[i].id == id) return static_cast<int>(i);
    return -1;
}

// Empty when the control is of the kind, else what is wrong.
std::string kind_problem(const DialogTemplate& d, const ControlTemplate& c, Kind kind) {
    std::string cls = c.cls;
    uint32_t s = c.style;
    auto button = [&](uint32_t type) -> std::string {
        if (cls != "Button") return "class " + cls;
        return (s & 0xF) == type ? "" : "button type " + std::to_string(s & 0xF);
    };
    switch (kind) {
        case Kind::Push:
            return button(kBsPush);
        case Kind::DefPush:
            return button(kBsDefPush);
        case Kind::Check:
            return button(kBsAutoCheck);
        case Kind::Check3:
            return button(kBs3State);  // the page cycles the state itself
        case Kind::Radio:
            return button(kBsAutoRadio);
        case Kind::Text:
            return cls == "Static" || (cls == "Button" && (s & 0xF) == kBsGroupBox) ? "" : "class " + cls;
        case Kind::Edit:
            return cls == "Edit" ? "" : "class " + cls;
        case Kind::Combo:
            if (cls != "ComboBox") return "class " + cls;
            return (s & 0x3) == kCbsDropDownList ? "" : "not a drop-down list";
        case Kind::Track:
            return cls == "msctls_trackbar32" ? "" : "class " + cls;
        case Kind::List:
            if (cls != "ListBox") return "class " + cls;
            if (!(s & (kLbsMultipleSel | kLbsExtendedSel))) return "single selection";
            return (s & kLbsNotify) ? "" : "does not notify";
        case Kind::ListView:
            if (cls != "SysListView32") return "class " + cls;
            if ((s & kLvsTypeMask) != kLvsReport) return "not a report view";
            if (!(s & kLvsEditLabels)) return "names cannot be edited in place";
            if (s & kLvsSort) return "sorts its items";
            return (s & kLvsShareImageLists) ? "does not own its image list" : "";
        case Kind::Spin: {
            if (cls != "msctls_updown32") return "class " + cls;
            uint32_t need = kUdsSetBuddyInt | kUdsAutoBuddy | kUdsAlignRight | kUdsNoThousands;
            if ((s & need) != need) return "spin style";
            int i = index_of(d, c.id);
            if (i == 0 || std::string(d.controls[i - 1].cls) != "Edit") return "no edit right before it";
            return "";
        }
    }
    return "unknown kind";
}

TEST(ResourceTables, EveryPageHasTheControlsItsCodeDrives) {
    for (const auto& page : kNeeds) {
        const DialogTemplate* d = zr::res::find_dialog(page.dialog);
        ASSERT_NE(d, nullptr) << "template " << page.dialog;
        for (const auto& need : page.controls) {
            const ControlTemplate* c = find_control(*d, need.id);
            ASSERT_NE(c, nullptr) << "template " << page.dialog << " control " << need.id;
            EXPECT_EQ(kind_problem(*d, *c, need.kind), "")
                << "template " << page.dialog << " control " << need.id;
            EXPECT_EQ(c->style & (kWsChild | kWsVisible), kWsChild | kWsVisible)
                << page.dialog << "/" << need.id;
        }
    }
}

TEST(ResourceTables, RadioButtonsFormTheirGroups) {
    for (const auto& [dialog, ids] : kRadioGroups) {
        const DialogTemplate* d = zr::res::find_dialog(dialog);
        ASSERT_NE(d, nullptr);
        int first = index_of(*d, ids[0]);
        ASSERT_GE(first, 0);
        for (size_t k = 0; k < ids.size(); ++k) {
            const ControlTemplate& c = d->controls[first + k];
            EXPECT_EQ(c.id, ids[k]) << dialog << ": group broken before " << ids[k];
            EXPECT_EQ((c.style & kWsGroup) != 0, k == 0) << dialog << "/" << c.id;
        }
        size_t after = first + ids.size();
        if (after < d->control_count) {
            EXPECT_TRUE(d->controls[after].style & kWsGroup)
                << dialog << ": group of " << ids[0] << " runs on";
        }
        EXPECT_TRUE(d->controls[first].style & kWsTabstop) << dialog << "/" << ids[0];
    }
}

TEST(ResourceTables, PagesAreChildTemplatesAndDialogsArePopups) {
    const int pages[] = {2000, 2002, 2004, 2005, 2018, 2020, 2021};
    for (int id : pages) {
        const DialogTemplate* d = zr::res::find_dialog(id);
        ASSERT_NE(d, nullptr) << id;
        EXPECT_EQ(d->style & (kWsChild | kWsPopup | kWsVisible), kWsChild) << id;
        EXPECT_EQ(d->style & (kWsCaption | kDsSetFont), kWsCaption | kDsSetFont) << id;
        EXPECT_EQ(d->cx, 252) << id;
        EXPECT_EQ(d->cy, 218) << id;
    }
    for (int id : {2007, 2015}) {
        const DialogTemplate* d = zr::res::find_dialog(id);
        ASSERT_NE(d, nullptr) << id;
        EXPECT_EQ(d->style & (kWsChild | kWsPopup | kDsModalFrame), kWsPopup | kDsModalFrame) << id;
    }
    for (size_t i = 0; i < zr::res::kDialogCount; ++i) {
        EXPECT_STREQ(zr::res::kDialogs[i].font, "MS Shell Dlg") << zr::res::kDialogs[i].id;
        EXPECT_EQ(zr::res::kDialogs[i].font_size, 8) << zr::res::kDialogs[i].id;
    }
}

TEST(ResourceTables, ControlsLieInsideTheirDialog) {
    for (size_t i = 0; i < zr::res::kDialogCount; ++i) {
        const DialogTemplate& d = zr::res::kDialogs[i];
        for (size_t k = 0; k < d.control_count; ++k) {
            const ControlTemplate& c = d.controls[k];
            // A combo box's height is that of its dropped-down list.
            int bottom = c.y + (std::string(c.cls) == "ComboBox" ? 12 : c.cy);
            EXPECT_TRUE(c.x >= 0 && c.y >= 0 && c.x + c.cx <= d.cx && bottom <= d.cy)
                << d.id << "/" << c.id << " \"" << c.text << "\"";
        }
    }
}

TEST(ResourceTables, StringsExistAndFitTheirBuffers) {
    struct Want {
        int id;
        size_t buffer;
    };
    // Titles of the prefetch sheet and the TCP/IP notice go into 260-byte buffers.
    const Want wants[] = {{6000, 1024}, {6002, 1024}, {6004, 1024}, {6005, 1024}, {6006, 1024}, {6021, 1024},
                          {6022, 1024}, {6031, 260},  {6032, 1024}, {6033, 1024}, {6039, 1024}, {6040, 1024},
                          {6056, 260},  {6058, 1024}, {6059, 260},  {6060, 260},  {6061, 260},  {6062, 260}};
    for (const auto& w : wants) {
        const char* s = zr::res::find_string(w.id);
        ASSERT_NE(s, nullptr) << w.id;
        EXPECT_GT(std::strlen(s), 0u) << w.id;
        EXPECT_LT(std::strlen(s), w.buffer) << w.id;
    }
    // The cache page finds an open question box again by this caption.
    EXPECT_STREQ(zr::res::find_string(6006), "Reset Cache?");
    EXPECT_EQ(zr::res::find_string(6001), nullptr);
}

TEST(ResourceTables, SiteIconAndLookupsOfMissingEntries) {
    bool site_icon = false;
    for (size_t i = 0; i < zr::res::kIconCount; ++i) site_icon |= zr::res::kIcons[i] == 5001;
    EXPECT_TRUE(site_icon);
    EXPECT_EQ(zr::res::find_dialog(2001), nullptr);
    EXPECT_EQ(zr::res::find_dialog(0), nullptr);
    EXPECT_EQ(zr::res::find_string(0), nullptr);
}

}  // namespace
