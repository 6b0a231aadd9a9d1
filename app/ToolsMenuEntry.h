#pragma once

/// Enters this program into the host's Tools menu. Of an entry that names this program file, only the
/// arguments and the mode are written. True when the full entry was written.
bool RegisterInToolsMenu();
