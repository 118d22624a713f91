// The maker-list merges.  The maker's lists (excad.dat, aggressive.dat) are in
// the line format of userex.gui.  A merge appends the site entries of the
// source list, in their written form, to the destination file:
//  - the destination keeps every byte it held; when its last line has no line
//    end, a CR LF is added before the first appended line;
//  - comment lines, blank lines and over-long lines of the source are not
//    carried over (the proxy has no use for them, and a line outside the format
//    could be split into something it never held);
//  - an entry the destination already holds is appended again: the proxy
//    reads the list in order, a repeated site is harmless to it, the two
//    entries may carry different flags, and deciding between them would need
//    a look-up over the whole destination.  exclude.gui is rebuilt from
//    scratch on every apply, so repeats do not pile up.
// One pass over each file: linear time, memory bounded by one block.  The
// destination is replaced crash-safely, and created when absent.  Result 1
// when the destination was written, 0 otherwise (source unreadable: nothing
// is touched).
#include <string>
#include <vector>

#include "elimination/site_codec.h"
#include "platform/fileio.h"
#include "platform/safe_file.h"
#include "platform/zrutil.h"

namespace {

constexpr size_t kBlock = 65536;

int merge_site_list(const char* source, const char* destination) {
    zr::fs::File* in = source ? zr::fs::open(source, "rb") : nullptr;
    if (!in) return 0;
    zr::fs::Replacement r;
    bool ok = destination && zr::fs::begin_replace(r, destination);
    std::string block(kBlock, '\0');
    char last = '\n';
    if (ok) {
        if (zr::fs::File* old = zr::fs::open(destination, "rb")) {
            while (ok) {
                size_t n = zr::fs::read(old, block.data(), block.size());
                if (n == 0) break;
                last = block[n - 1];
                ok = zr::fs::write_all(r, block.data(), n);
            }
            zr::fs::close(old);
        }
    }
    SiteReadState state;
    std::vector<SiteEntry> entries;
    std::string out;
    bool at_end = false;
    while (ok && !at_end) {
        size_t n = zr::fs::read(in, block.data(), block.size());
        if (n == 0) {
            finish_site_text(state, entries);
            at_end = true;
        } else {
            feed_site_text(state, block.data(), n, entries);
        }
        out.clear();
        for (const SiteEntry& entry : entries) {
            if (entry.kind != kSiteEntry) continue;
            if (last != '\n') {
                out.append("\r\n");
                last = '\n';
            }
            append_site_entry(out, entry, false);
        }
        entries.clear();
        ok = zr::fs::write_all(r, out.data(), out.size());
    }
    zr::fs::close(in);
    if (!ok) {
        zr::fs::abandon_replace(r);
        return 0;
    }
    return zr::fs::commit_replace(r) ? 1 : 0;
}

}  // namespace

int copy_exclude_ads(char* source, char* destination) { return merge_site_list(source, destination); }

int copy_aggressive(char* source, char* destination) { return merge_site_list(source, destination); }
