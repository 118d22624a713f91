// The rebuild of exclude.gui, in this order:
//  1-2. the data directory and the four paths (all of them must fit);
//  3.   a new userex.gui is started (a temporary file beside it);
//  4.   exclude.gui is deleted, whether or not step 3 worked;
//  5.   the list is written and the new userex.gui put in place;
//  6.   site_elimination nonzero: exclude.gui becomes a copy of userex.gui -
//       of what it holds now, the old content when step 3 or 5 failed;
//  7.   ad_list_on: the advertising list is merged in, then, with
//       aggressive_elimination too, the aggressive list.
// No failure stops a later step, and nothing is reported.
#include "elimination/elimination_files.h"

#include "elimination/site_file.h"
#include "platform/safe_file.h"
#include "platform/zrutil.h"
#include "settings/context.h"
#include "settings/store.h"

void write_elimination_files() {
    char userex[zr::fs::kDataPathCapacity];
    char exclude[zr::fs::kDataPathCapacity];
    char excad[zr::fs::kDataPathCapacity];
    char aggressive[zr::fs::kDataPathCapacity];
    if (!data_file_path("userex.gui", userex, sizeof userex) ||
        !data_file_path("exclude.gui", exclude, sizeof exclude) ||
        !data_file_path("excad.dat", excad, sizeof excad) ||
        !data_file_path("aggressive.dat", aggressive, sizeof aggressive))
        return;

    zr::fs::Replacement list_file;
    bool opened = zr::fs::begin_replace(list_file, userex, "wb");
    zr::fs::delete_file(exclude);
    if (opened) {
        if (!write_user_site_list(list_file.file)) list_file.failed = true;
        zr::fs::commit_replace(list_file);
    }

    if (read_dword(kSettingsKey, "site_elimination", 0) != 0) zr::fs::copy_file_safely(userex, exclude);

    if (g_settings.working.ad_list_on) {
        copy_exclude_ads(excad, exclude);
        if (g_settings.working.aggressive_elimination) copy_aggressive(aggressive, exclude);
    }
}
