#!/usr/bin/env bash
# Builds the program with its help file, and the sample studio; prints the program's path.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$root/scripts/setup.sh"
build_preset release PluginManager PluginManagerCmd studio_registrar window_probe || die "the build failed"
"$root/scripts/help.sh" >/dev/null
echo "$bin/PluginManager.exe"
