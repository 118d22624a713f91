// The site entry dialog (template 2007): the user types the name of a site to
// add to the user site list.  The template is shared with the prefetch site
// list's entry dialog, which shows the second field that this dialog hides;
// both enable OK by update_entry_ok.
#pragma once

#include "platform/win.h"

// Control identifiers of template 2007.
enum SiteEntryControl : int {
    kEntryName = 300,         // the site name
    kEntrySecond = 302,       // second field (hidden here)
    kEntrySecondLabel = 251,  // its label (hidden here)
};

// The texts fields 300 and 302 had when the dialog last opened.  Module-wide;
// refilled at every opening.
extern char g_entry_initial_name[1024];
extern char g_entry_initial_second[1024];

// OK is disabled while both initial texts are given and both fields still
// hold exactly them; otherwise it is enabled exactly when field 300 is not
// empty.  Either initial text may be null.
void update_entry_ok(HWND dialog, const char* initial_first, const char* initial_second);

// True when userex.gui can carry `name` as it stands: a name with "#" (the
// rest would read as a comment) or with white space other than the space
// (tab, line feed, vertical tab, form feed, carriage return: it would split
// into words) cannot be stored.
bool site_name_storable(const char* name);

// Dialog procedure.  Results: 1 after OK, 2 after Cancel, 0 when closed from
// the window frame.  OK with a name that cannot be stored says why and keeps
// the dialog open.
INT_PTR CALLBACK site_entry_dialog_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);
