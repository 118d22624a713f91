// Placeholders for the pages and steps that later work fills in (cache page,
// connection page, site elimination page, TCP/IP page and its commit, the
// prefetch sheet): each page answers the sheet's notifications as every page
// does, and nothing more.
#include "settings/collaborators.h"
#include "settings/context.h"
#include "settings/pages.h"

namespace {

INT_PTR placeholder_page(HWND page, UINT message, LPARAM lparam) {
    if (message == WM_NOTIFY) return handle_page_notify(page, lparam);
    return 0;
}

}  // namespace

INT_PTR CALLBACK connection_page_proc(HWND page, UINT message, WPARAM, LPARAM lparam) {
    return placeholder_page(page, message, lparam);
}
INT_PTR CALLBACK tcp_page_proc(HWND page, UINT message, WPARAM, LPARAM lparam) {
    return placeholder_page(page, message, lparam);
}

void tcp_commit(uint8_t) {}

extern "C" int ZR_CALL create_prefetch_window(HWND, HINSTANCE, settings_struct*) { return 0; }
