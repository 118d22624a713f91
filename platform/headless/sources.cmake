# sources of platform/headless
