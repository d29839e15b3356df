#!/usr/bin/env bash
# Installs what is needed, builds everything and runs every test (headless); then builds the
# suite again with AddressSanitizer and UndefinedBehaviorSanitizer and runs it under them
# (NOD_SANITIZE=0 skips that second pass).
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/deps.sh
./scripts/build.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "${BUILD_DIR:-build}" --output-on-failure -j "$(nproc)"

if [ "${NOD_SANITIZE:-1}" != 0 ]; then
  SAN_DIR=${SAN_BUILD_DIR:-build-sanitize}
  BUILD_DIR=$SAN_DIR ./scripts/build.sh -DNOD_SANITIZE=ON -DNOD_BUILD_BENCH=OFF
  supp="$PWD/tests/sanitizer/lsan.supp"
  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:detect_odr_violation=0
  export LSAN_OPTIONS=suppressions=$supp:print_suppressions=0
  export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
  ctest --test-dir "$SAN_DIR" --output-on-failure -j "$(nproc)"
fi
