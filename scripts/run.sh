#!/usr/bin/env bash
# Installs what is needed, builds and starts the workbench on the embedded demo database.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/deps.sh
./scripts/build.sh
exec "${BUILD_DIR:-build}/host/workbench/workbench" "$@"
