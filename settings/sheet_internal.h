// Pieces of the main sheet that tests look at directly.
#pragma once

#include "platform/win.h"

// Fills `pages` (room for 4) from the page table for this system; returns
// the number of pages (3 on the NT family, 4 on the 9x family).
int build_page_table(PROPSHEETPAGEA* pages);
// Clears DS_CONTEXTHELP in a dialog template in memory, standard or extended.
void clear_context_help(void* dialog_template);
int CALLBACK sheet_callback(HWND window, UINT message, LPARAM parameter);
