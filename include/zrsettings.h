/* Zephyrion settings module: the interface a host application includes.
 *
 * Calling convention: every exported function is extern "C", __cdecl, with
 * undecorated names on both x86 and x86-64 (see zrsettings.def).  All of them
 * must be called on the host's user-interface thread. */
#ifndef ZRSETTINGS_H
#define ZRSETTINGS_H

#include <stddef.h>
#include <stdint.h>

#ifdef _WIN32
#include <windows.h>
#define ZR_CALL __cdecl
#else
#include "platform/win.h"
#define ZR_CALL
#endif

#if defined(ZR_BUILDING_MODULE) && defined(_WIN32) && !defined(ZR_STATIC)
#define ZR_EXPORT __declspec(dllexport)
#else
#define ZR_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The host's option record: 1,124 bytes, little-endian, natural alignment.
 * Offsets are part of the host interface and are checked at compile time. */
typedef struct settings_struct {
    uint32_t host_field_00;          /*    0 carried */
    uint32_t dial_option;            /*    4 */
    uint32_t cache_size_mb;          /*    8 */
    uint32_t host_field_0c;          /*   12 carried */
    uint32_t host_field_10;          /*   16 carried */
    uint32_t host_field_14;          /*   20 carried */
    uint32_t connection_type;        /*   24 */
    uint32_t host_field_1c;          /*   28 carried */
    uint32_t host_field_20;          /*   32 carried */
    uint8_t conn_option_310;         /*   36 */
    uint8_t tcp_option_303;          /*   37 */
    uint8_t host_field_26;           /*   38 carried */
    uint8_t conn_option_309;         /*   39 */
    uint8_t conn_option_308;         /*   40 */
    uint8_t host_field_29;           /*   41 carried */
    uint8_t conn_option_313;         /*   42 */
    uint8_t conn_option_312;         /*   43 */
    uint8_t ad_list_on;              /*   44 */
    uint8_t host_field_2d;           /*   45 carried */
    uint8_t cache_option_300;        /*   46 */
    uint8_t site_list_changed;       /*   47 */
    uint8_t host_field_30;           /*   48 carried */
    uint8_t padding_31[3];           /*   49 never copied */
    uint32_t host_field_34;          /*   52 carried */
    uint8_t host_field_38;           /*   56 carried */
    uint8_t host_field_39;           /*   57 carried */
    uint8_t padding_3a[2];           /*   58 never copied */
    uint32_t apply_marker;           /*   60 written as 2 by settings_apply, never copied */
    uint8_t skin_changed;            /*   64 */
    char skin_path[260];             /*   65 */
    char host_text_145[260];         /*  325 carried */
    char dialup_entry[260];          /*  585 */
    uint8_t host_field_34d;          /*  845 carried */
    uint8_t padding_34e[2];          /*  846 never copied */
    uint32_t host_field_350;         /*  848 carried */
    uint8_t host_field_354;          /*  852 carried */
    uint8_t conn_option_316;         /*  853 */
    char conn_text_317[260];         /*  854 */
    uint8_t padding_45a[2];          /* 1114 never copied */
    uint32_t conn_number_318;        /* 1116 */
    uint8_t host_field_460;          /* 1120 carried */
    uint8_t aggressive_elimination;  /* 1121 */
    uint8_t aggressive_changed;      /* 1122 */
    uint8_t conn_option_310_changed; /* 1123 */
} settings_struct;

/* Opens the main settings sheet modally; returns when it closes.  Returns
 * nonzero when the sheet ran or an open sheet was brought to the front, 0
 * when the resource module could not be loaded. */
ZR_EXPORT int ZR_CALL create_settings_window(HWND parent, HINSTANCE instance, settings_struct* settings);
/* Commits the working copy into *settings (only when something changed). */
ZR_EXPORT void ZR_CALL settings_apply(settings_struct* settings);
/* Throws the edits away: reloads the site list and copies *settings in again. */
ZR_EXPORT void ZR_CALL settings_cancel(settings_struct* settings);
/* show == 1 shows the open sheets, any other value hides them. */
ZR_EXPORT void ZR_CALL state_show_settings_window(int show);
/* Opens the prefetch sheet; returns the highest level of the pages applied. */
ZR_EXPORT int ZR_CALL create_prefetch_window(HWND owner, HINSTANCE instance, settings_struct* settings);

#ifdef __cplusplus
}
#endif

#endif
