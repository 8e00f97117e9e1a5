#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is missing, builds, runs every test and prints their number.
# scripts/test.sh [preset]: release where none is given.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}

scripts/setup.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
log="build/$preset/tests.log"
if ! ctest --preset "$preset" --parallel "$(nproc)" --no-tests=error --quiet --output-log "$log"; then
    cat "$log"
    exit 1
fi
echo "$(grep -c '^ *[0-9]*/[0-9]* Test .* Passed' "$log") tests passed ($preset)"
