# sources of platform/common
