// Pieces of the main sheet that tests look at directly.
#pragma once

#include "platform/win.h"

// One page description as the sheet reads it.  The sheet steps from one
// description to the next by dwSize, so the table holds descriptions of
// exactly that size: the SDK's PROPSHEETPAGEA has later fields (hActCtx).
#ifdef _WIN32
typedef PROPSHEETPAGEA_V2 PageDescription;
#else
typedef PROPSHEETPAGEA PageDescription;
#endif

// Fills `pages` (room for 4) from the page table for this system; returns
// the number of pages (3 on the NT family, 4 on the 9x family).
int build_page_table(PageDescription* pages);
// Clears DS_CONTEXTHELP in a dialog template in memory, standard or extended.
void clear_context_help(void* dialog_template);
int CALLBACK sheet_callback(HWND window, UINT message, LPARAM parameter);
