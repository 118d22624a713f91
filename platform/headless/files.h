// Headless file layer: Windows paths onto the host file system, and a seam
// that makes a chosen create, write, flush, sync or rename fail.
#pragma once

#include <string>

namespace zr::headless {

// "X:\a\b" -> <host_dir>/a/b for a drive mapped with map_drive; a drive that
// is not mapped does not exist (its paths lead nowhere).  Relative paths get
// '/' for '\'; host paths starting with '/' stay as they are.
void map_drive(char letter, const std::string& host_dir);
void unmap_drives();
std::string host_path(const char* windows_path);

// Operations the seam counts.  Create: opening a file for writing ("w", "wb",
// "a"); Write: each zr::fs::write (a failing write stores half of its bytes,
// as a full disk would); Flush, Sync: zr::fs::flush / sync; Rename:
// zr::fs::replace_file.
enum class FileOp { Create, Write, Flush, Sync, Rename };
// The nth call of `op` from now on (1 = the next one) fails.
void fail_file_op(FileOp op, int nth);
// Removes the planned failures and sets the counters back to 0.
void clear_file_faults();
// Calls of `op` since the last clear_file_faults.
int file_op_count(FileOp op);

}  // namespace zr::headless
