#pragma once

/// Enters this program into the host's Tools menu. An entry of this very program file only gets its arguments
/// and its mode anew. True when the full entry was written.
bool RegisterInToolsMenu();
