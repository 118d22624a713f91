// The controls each template must hold for the code that drives it: id and
// kind, taken from the pages' control tables. Shared by the table test and the
// test that creates the dialogs from zrres.dll.
#pragma once

#include <vector>

namespace zr_test {

enum class Kind { Push, DefPush, Check, Check3, Radio, Text, Edit, List, Combo, Spin, Track, ListView };

struct Need {
    int id;
    Kind kind;
};

struct PageNeeds {
    int dialog;
    std::vector<Need> controls;
};

// clang-format off
inline const PageNeeds kNeeds[] = {
    {2000, {
        {300, Kind::Check}, {301, Kind::Text}, {302, Kind::Text}, {303, Kind::Track}, {304, Kind::Text},
        {305, Kind::Push}, {306, Kind::Text}, {310, Kind::Text}, {311, Kind::Push}, {312, Kind::Text},
    }},
    {2002, {
        {303, Kind::Radio}, {304, Kind::Radio}, {305, Kind::Radio}, {306, Kind::Radio}, {307, Kind::Radio},
        {308, Kind::Check}, {309, Kind::Check}, {310, Kind::Check}, {311, Kind::Edit}, {312, Kind::Check},
        {313, Kind::Check}, {314, Kind::Check}, {315, Kind::Combo}, {316, Kind::Check}, {317, Kind::Edit},
        {318, Kind::Edit}, {252, Kind::Text}, {253, Kind::Text}, {254, Kind::Text},
    }},
    {2004, {
        {300, Kind::Radio}, {301, Kind::Radio}, {320, Kind::Radio}, {321, Kind::Radio}, {302, Kind::Push},
        {303, Kind::Check}, {304, Kind::Push},
    }},
    {2005, {
        {300, Kind::List}, {301, Kind::Check}, {302, Kind::Check}, {303, Kind::Check}, {304, Kind::Check},
        {305, Kind::Push}, {306, Kind::Push}, {307, Kind::Push}, {308, Kind::Push}, {309, Kind::Check},
        {310, Kind::Radio}, {311, Kind::Radio}, {312, Kind::Check},
    }},
    {2007, {
        {300, Kind::Edit}, {302, Kind::Edit}, {251, Kind::Text}, {1, Kind::DefPush}, {2, Kind::Push},
    }},
    {2015, {
        {306, Kind::Edit}, {307, Kind::Spin}, {309, Kind::Edit}, {310, Kind::Spin}, {312, Kind::Edit},
        {313, Kind::Spin}, {314, Kind::Check}, {315, Kind::Check}, {318, Kind::Edit}, {319, Kind::Radio},
        {320, Kind::Radio}, {321, Kind::Radio}, {322, Kind::Radio}, {323, Kind::Radio}, {325, Kind::Radio},
        {1, Kind::DefPush}, {2, Kind::Push},
    }},
    {2018, {
        {301, Kind::Edit}, {302, Kind::Spin}, {303, Kind::Edit}, {304, Kind::Spin}, {305, Kind::Check},
        {306, Kind::Check}, {307, Kind::Check}, {321, Kind::Check}, {322, Kind::Check}, {323, Kind::Check},
        {324, Kind::List}, {325, Kind::List}, {326, Kind::List}, {327, Kind::Push}, {328, Kind::Push},
        {329, Kind::Push}, {250, Kind::Text}, {251, Kind::Text}, {252, Kind::Text}, {253, Kind::Text},
        {254, Kind::Text},
    }},
    {2020, {
        {300, Kind::ListView}, {301, Kind::Push}, {302, Kind::Push}, {306, Kind::Edit}, {307, Kind::Spin},
        {308, Kind::Edit}, {309, Kind::Spin}, {310, Kind::Check3}, {311, Kind::Check3}, {312, Kind::Radio},
        {313, Kind::Radio}, {250, Kind::Text}, {251, Kind::Text}, {252, Kind::Text}, {253, Kind::Text},
        {254, Kind::Text}, {255, Kind::Text},
    }},
    {2021, {
        {300, Kind::Edit}, {301, Kind::Spin}, {302, Kind::Edit}, {303, Kind::Spin}, {304, Kind::Radio},
        {305, Kind::Radio}, {308, Kind::List}, {309, Kind::Edit}, {310, Kind::Push}, {311, Kind::Push},
        {312, Kind::Check},
    }},
};
// clang-format on

// Window class of a kind ("" when either Static or a group box will do).
inline const char* kind_class(Kind k) {
    switch (k) {
        case Kind::Push:
        case Kind::DefPush:
        case Kind::Check:
        case Kind::Check3:
        case Kind::Radio:
            return "Button";
        case Kind::Text:
            return "";
        case Kind::Edit:
            return "Edit";
        case Kind::List:
            return "ListBox";
        case Kind::Combo:
            return "ComboBox";
        case Kind::Spin:
            return "msctls_updown32";
        case Kind::Track:
            return "msctls_trackbar32";
        case Kind::ListView:
            return "SysListView32";
    }
    return "";
}

}  // namespace zr_test
