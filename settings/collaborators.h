// The steps of apply and cancel that other subsystems provide.
#pragma once

#include <cstdint>

// Empties the user site list and reads it again from userex.gui.
void reload_user_site_list();
// Rewrites userex.gui from the user site list and rebuilds exclude.gui.
void write_elimination_files();
// Commits the TCP/IP tuning values to the network stack (Windows 9x family).
void tcp_commit(uint8_t tcp_changed);
