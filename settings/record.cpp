#include "settings/record.h"

#include <cstddef>
#include <cstring>

#include "settings/context.h"

// The record crosses the module boundary as raw memory: its layout is part of
// the host interface, on the 32-bit and the 64-bit build alike.
static_assert(sizeof(settings_struct) == 1124);
static_assert(offsetof(settings_struct, host_field_00) == 0);
static_assert(offsetof(settings_struct, dial_option) == 4);
static_assert(offsetof(settings_struct, cache_size_mb) == 8);
static_assert(offsetof(settings_struct, host_field_0c) == 12);
static_assert(offsetof(settings_struct, host_field_10) == 16);
static_assert(offsetof(settings_struct, host_field_14) == 20);
static_assert(offsetof(settings_struct, connection_type) == 24);
static_assert(offsetof(settings_struct, host_field_1c) == 28);
static_assert(offsetof(settings_struct, host_field_20) == 32);
static_assert(offsetof(settings_struct, conn_option_310) == 36);
static_assert(offsetof(settings_struct, tcp_option_303) == 37);
static_assert(offsetof(settings_struct, host_field_26) == 38);
static_assert(offsetof(settings_struct, conn_option_309) == 39);
static_assert(offsetof(settings_struct, conn_option_308) == 40);
static_assert(offsetof(settings_struct, host_field_29) == 41);
static_assert(offsetof(settings_struct, conn_option_313) == 42);
static_assert(offsetof(settings_struct, conn_option_312) == 43);
static_assert(offsetof(settings_struct, ad_list_on) == 44);
static_assert(offsetof(settings_struct, host_field_2d) == 45);
static_assert(offsetof(settings_struct, cache_option_300) == 46);
static_assert(offsetof(settings_struct, site_list_changed) == 47);
static_assert(offsetof(settings_struct, host_field_30) == 48);
static_assert(offsetof(settings_struct, padding_31) == 49);
static_assert(offsetof(settings_struct, host_field_34) == 52);
static_assert(offsetof(settings_struct, host_field_38) == 56);
static_assert(offsetof(settings_struct, host_field_39) == 57);
static_assert(offsetof(settings_struct, padding_3a) == 58);
static_assert(offsetof(settings_struct, apply_marker) == 60);
static_assert(offsetof(settings_struct, skin_changed) == 64);
static_assert(offsetof(settings_struct, skin_path) == 65);
static_assert(offsetof(settings_struct, host_text_145) == 325);
static_assert(offsetof(settings_struct, dialup_entry) == 585);
static_assert(offsetof(settings_struct, host_field_34d) == 845);
static_assert(offsetof(settings_struct, padding_34e) == 846);
static_assert(offsetof(settings_struct, host_field_350) == 848);
static_assert(offsetof(settings_struct, host_field_354) == 852);
static_assert(offsetof(settings_struct, conn_option_316) == 853);
static_assert(offsetof(settings_struct, conn_text_317) == 854);
static_assert(offsetof(settings_struct, padding_45a) == 1114);
static_assert(offsetof(settings_struct, conn_number_318) == 1116);
static_assert(offsetof(settings_struct, host_field_460) == 1120);
static_assert(offsetof(settings_struct, aggressive_elimination) == 1121);
static_assert(offsetof(settings_struct, aggressive_changed) == 1122);
static_assert(offsetof(settings_struct, conn_option_310_changed) == 1123);
static_assert(sizeof(settings_struct::skin_path) == 260 && sizeof(settings_struct::host_text_145) == 260 &&
              sizeof(settings_struct::dialup_entry) == 260 && sizeof(settings_struct::conn_text_317) == 260);

namespace {

// A plain string copy: the bytes up to and including the first NUL move, the
// destination's bytes behind it keep what they held.  The host guarantees a
// NUL within the field; should one be missing, the copy stops at the field's
// end and the last byte becomes the terminator, so nothing is read or written
// outside the field.
template <size_t N>
void copy_text(char (&to)[N], const char (&from)[N]) {
    const void* nul = std::memchr(from, '\0', N);
    const size_t length = nul ? static_cast<const char*>(nul) - from : N - 1;
    std::memcpy(to, from, length);
    to[length] = '\0';
}

// Every field but apply_marker and the padding, in one place for both directions.
template <typename From, typename To>
void copy_fields(const From& from, To& to) {
    to.host_field_00 = from.host_field_00;
    to.dial_option = from.dial_option;
    to.cache_size_mb = from.cache_size_mb;
    to.host_field_0c = from.host_field_0c;
    to.host_field_10 = from.host_field_10;
    to.host_field_14 = from.host_field_14;
    to.connection_type = from.connection_type;
    to.host_field_1c = from.host_field_1c;
    to.host_field_20 = from.host_field_20;
    to.conn_option_310 = from.conn_option_310;
    to.tcp_option_303 = from.tcp_option_303;
    to.host_field_26 = from.host_field_26;
    to.conn_option_309 = from.conn_option_309;
    to.conn_option_308 = from.conn_option_308;
    to.host_field_29 = from.host_field_29;
    to.conn_option_313 = from.conn_option_313;
    to.conn_option_312 = from.conn_option_312;
    to.ad_list_on = from.ad_list_on;
    to.host_field_2d = from.host_field_2d;
    to.cache_option_300 = from.cache_option_300;
    to.site_list_changed = from.site_list_changed;
    to.host_field_30 = from.host_field_30;
    to.host_field_34 = from.host_field_34;
    to.host_field_38 = from.host_field_38;
    to.host_field_39 = from.host_field_39;
    to.skin_changed = from.skin_changed;
    copy_text(to.skin_path, from.skin_path);
    copy_text(to.host_text_145, from.host_text_145);
    copy_text(to.dialup_entry, from.dialup_entry);
    to.host_field_34d = from.host_field_34d;
    to.host_field_350 = from.host_field_350;
    to.host_field_354 = from.host_field_354;
    to.conn_option_316 = from.conn_option_316;
    copy_text(to.conn_text_317, from.conn_text_317);
    to.conn_number_318 = from.conn_number_318;
    to.host_field_460 = from.host_field_460;
    to.aggressive_elimination = from.aggressive_elimination;
    to.aggressive_changed = from.aggressive_changed;
    to.conn_option_310_changed = from.conn_option_310_changed;
}

}  // namespace

void copy_in(const settings_struct* host) { copy_fields(*host, g_settings.working); }

void copy_out(settings_struct* host) { copy_fields(g_settings.working, *host); }
