// The rebuild of the proxy's elimination list on apply.
#pragma once

// Rewrites userex.gui from the user site list and rebuilds exclude.gui from
// the three switches (site_elimination in the registry, ad_list_on and
// aggressive_elimination in the working copy).  Every file is replaced
// crash-safely.  Nothing happens when the data directory is unknown or a path
// does not fit its 1,024 bytes.
void write_elimination_files();
