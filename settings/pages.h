// Dialog procedures of the main sheet's pages.
#pragma once

#include "platform/win.h"

INT_PTR CALLBACK cache_page_proc(HWND page, UINT message, WPARAM wparam, LPARAM lparam);
INT_PTR CALLBACK connection_page_proc(HWND page, UINT message, WPARAM wparam, LPARAM lparam);
INT_PTR CALLBACK elimination_page_proc(HWND page, UINT message, WPARAM wparam, LPARAM lparam);
INT_PTR CALLBACK tcp_page_proc(HWND page, UINT message, WPARAM wparam, LPARAM lparam);
