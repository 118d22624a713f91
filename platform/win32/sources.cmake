# sources of platform/win32
