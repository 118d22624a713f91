// The generated resource tables hold what the pages rely on: every template
// with the controls each page drives, of the right class and kind, grouped
// the way the pages expect, and every string, sized for its buffer.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "page_needs.h"
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

using zr_test::Kind;
using zr_test::kNeeds;

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
