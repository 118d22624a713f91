// The in-house help library.
#pragma once

// Opens the product's help; `file` null opens the main help page.
void show_help_file(const char* file);
