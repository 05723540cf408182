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
    # Without a simulator (no folder in the settings, no FERROLUND_GAME_ROOT, none found in
    # Steam's libraries) open the sample installation, made anew when the generator changed.
    if [ -z "$(build/bin/ferrolund-cli paths | sed -n 's/^Rail Works: //p')" ]; then
      if [ ! -f build/sample/SampleManifest.tsv ] || [ build/bin/ferrolund-cli -nt build/sample/SampleManifest.tsv ]; then
        rm -rf build/sample
        build/bin/ferrolund-cli make-sample build/sample
      fi
      export FERROLUND_GAME_ROOT="$PWD/build/sample"
    fi
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
