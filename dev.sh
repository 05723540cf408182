#!/usr/bin/env bash
# The two commands a newcomer needs:
#   ./dev.sh open   set up, build and open Ferrolund
#   ./dev.sh test   set up, build and run every test
set -euo pipefail
cd "$(dirname "$0")"

build() {
  scripts/setup.sh
  cmake -S . -B build -G Ninja ${FERROLUND_CMAKE_ARGS:-}
  cmake --build build --parallel
}

case "${1:-}" in
  open)
    build
    shift
    exec build/bin/ferrolund "$@"
    ;;
  test)
    build
    ctest --test-dir build --output-on-failure --parallel "$(nproc)" --timeout 600
    ;;
  *)
    echo "usage: ./dev.sh open | test" >&2
    exit 2
    ;;
esac
