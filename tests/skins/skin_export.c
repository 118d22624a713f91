/* A usable skin without the icon and bitmap: it exports the window maker. */
__declspec(dllexport) int create_skin_window(void) { return 0; }
