// Numbers of the resources in zrres.dll. The settings module refers to them by
// these numbers; control ids are written as numbers in zrres.rc, beside the
// role each one plays on its page.
#pragma once

// Dialog templates.
#define IDD_CACHE_PAGE 2000
#define IDD_CONNECTION_PAGE 2002
#define IDD_TCPIP_PAGE 2004
#define IDD_ELIMINATION_PAGE 2005
#define IDD_SITE_ENTRY 2007
#define IDD_TCPIP_ADVANCED 2015
#define IDD_SCHEDULE_PAGE 2018
#define IDD_PREFETCH_SITES_PAGE 2020
#define IDD_PREFETCH_DEPTH_PAGE 2021

// Icons.
#define IDI_SITE 5001

// Strings.
#define IDS_CACHE_TITLE 6000
#define IDS_CONNECTION_TITLE 6002
#define IDS_CACHE_PERCENT 6004
#define IDS_RESET_CACHE_TEXT 6005
#define IDS_RESET_CACHE_CAPTION 6006
#define IDS_TCPIP_TITLE 6021
#define IDS_ELIMINATION_TITLE 6022
#define IDS_TCPIP_NOTICE_TEXT 6031
#define IDS_REMOVE_SITES_TEXT 6032
#define IDS_REMOVE_SITES_CAPTION 6033
#define IDS_SPEED_TEST_TEXT 6039
#define IDS_SPEED_TEST_CAPTION 6040
#define IDS_TCPIP_NOTICE_CAPTION 6056
#define IDS_SETTINGS_CAPTION 6058
#define IDS_SCHEDULE_TITLE 6059
#define IDS_PREFETCH_SITES_TITLE 6060
#define IDS_PREFETCH_DEPTH_TITLE 6061
#define IDS_PREFETCH_CAPTION 6062
