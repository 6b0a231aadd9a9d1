#!/usr/bin/env bash
# Excludes all plug-ins whose files are not there; for a shell that can start Windows programs.
# MANAGER names the companion where it is not found by itself: MANAGER="wine /path/PluginManagerCmd.exe"
set -euo pipefail

manager=${MANAGER:-PluginManagerCmd.exe}
for category in dx vst vst3 dxi vsti vst3i dmo wrapped-vst wrapped-vsti; do
    # shellcheck disable=SC2086  # the program and its starter are two words
    $manager list --only missing --category "$category" --format csv | $manager exclude --from -
done
