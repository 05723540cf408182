#!/usr/bin/env bash
# Installs the build into a temporary prefix and runs the installed programs as a user
# would: their own files must land in $XDG_DATA_HOME/ferrolund (or ~/.local/share/ferrolund),
# seeded with the shipped data, and nothing may be written into the prefix. Also checks the
# desktop entry and the file types the prefix holds.
#   install_test.sh CMAKE BUILD_DIR
set -euo pipefail
cmake=$1
build=$2
work=$(mktemp -d "${TMPDIR:-/tmp}/ferrolund-install-test.XXXXXX")
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

fail() { echo "FAIL: $*" >&2; exit 1; }
skipped() { echo "skipped: $*"; }

"$cmake" --install "$build" --prefix "$prefix" >"$work/install.log" || { cat "$work/install.log"; fail "cmake --install"; }
for f in bin/ferrolund bin/ferrolund-cli bin/serz \
         share/ferrolund/Language/Lang_English.txt share/ferrolund/Templates/APBatch1.txt \
         share/applications/ferrolund.desktop share/mime/packages/ferrolund.xml \
         share/icons/hicolor/scalable/apps/ferrolund.svg; do
  [ -f "$prefix/$f" ] || fail "not installed: $f"
done
[ ! -e "$prefix/bin/FerrolundBuildTree.txt" ] || fail "the build tree's marker was installed"

listing() { (cd "$prefix" && find . -printf '%p %s %T@ %m\n' | LC_ALL=C sort); }
listing >"$work/before"

# The user: a home of its own, no simulator configured.
export HOME=$work/home XDG_DATA_HOME=$work/data
unset FERROLUND_GAME_ROOT FERROLUND_SERZ
mkdir -p "$HOME"
cli=$prefix/bin/ferrolund-cli
appRoot=$XDG_DATA_HOME/ferrolund

"$cli" paths >"$work/paths.txt"
grep -qxF "Program folder: $appRoot" "$work/paths.txt" || { cat "$work/paths.txt"; fail "paths names another program folder"; }
diff -r -x ShippedFiles.txt "$prefix/share/ferrolund" "$appRoot" || fail "AppRoot is not seeded with the shipped data"
[ -s "$appRoot/ShippedFiles.txt" ] || fail "AppRoot does not list the shipped files it was seeded with"

# A command that writes into AppRoot: index the routes of a sample installation.
"$cli" make-sample "$work/game" >/dev/null
"$cli" --game-root "$work/game" --yes index-routes >"$work/index.txt"
[ -s "$appRoot/IndexFiles/RouteIndex.csv" ] || { cat "$work/index.txt"; fail "index-routes wrote no IndexFiles/RouteIndex.csv in AppRoot"; }

# The installed converter, on a binary file of the sample.
bin=$(find "$work/game" -name '*.bin' -print -quit)
[ -n "$bin" ] || fail "the sample installation holds no .bin file"
"$prefix/bin/serz" "$bin" xml:"$work/converted.xml"
grep -q 'xmlns:d="http://www.kuju.com/TnT/2003/Delta"' "$work/converted.xml" || fail "serz wrote no game XML"

# A user's template survives a second start; without XDG_DATA_HOME the folder is under HOME.
echo "mine" >"$appRoot/Templates/APBatch1.txt"
"$cli" paths >/dev/null
[ "$(cat "$appRoot/Templates/APBatch1.txt")" = mine ] || fail "a second start overwrote a template the user changed"
(unset XDG_DATA_HOME; "$cli" paths) >"$work/paths-home.txt"
grep -qxF "Program folder: $HOME/.local/share/ferrolund" "$work/paths-home.txt" || fail "without XDG_DATA_HOME AppRoot is not ~/.local/share/ferrolund"
[ -f "$HOME/.local/share/ferrolund/Language/Lang_English.txt" ] || fail "~/.local/share/ferrolund is not seeded"

listing >"$work/after"
diff "$work/before" "$work/after" || fail "the programs wrote into the install prefix"

# The desktop entry.
desktop=$prefix/share/applications/ferrolund.desktop
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$desktop" || fail "desktop-file-validate rejects the desktop entry"
else
  skipped "desktop-file-validate is not installed; checking the entry's keys only"
fi
for key in 'Type=Application' 'Exec=ferrolund %f' 'Icon=ferrolund'; do
  grep -qxF "$key" "$desktop" || fail "the desktop entry lacks $key"
done
mimeTypes=$(sed -n 's/^MimeType=//p' "$desktop" | tr ';' ' ')
[ -n "$mimeTypes" ] || fail "the desktop entry names no MimeType"

# The file types: well-formed, accepted by update-mime-database, and every type the entry
# names is defined by them or by the system's database.
mimeXml=$prefix/share/mime/packages/ferrolund.xml
if command -v xmllint >/dev/null; then
  xmllint --noout "$mimeXml" || fail "the mime types are not well-formed XML"
else
  python3 -c 'import sys, xml.dom.minidom; xml.dom.minidom.parse(sys.argv[1])' "$mimeXml" ||
    fail "the mime types are not well-formed XML"
fi
if command -v update-mime-database >/dev/null && [ -f /usr/share/mime/packages/freedesktop.org.xml ]; then
  mime=$work/share/mime
  mkdir -p "$mime/packages"
  cp /usr/share/mime/packages/freedesktop.org.xml "$mimeXml" "$mime/packages/"
  XDG_DATA_DIRS=$work/share update-mime-database "$mime" || fail "update-mime-database rejects the mime types"
  for t in $mimeTypes; do
    grep -qxF "$t" "$mime/types" || fail "the desktop entry names $t, which no mime package defines"
  done
  for glob in 'application/x-railworks-texture:*.tgpcdx' 'application/x-railworks-ap:*.ap' \
              'application/x-railworks-serz:*.xsec' 'image/x-dds:*.dds'; do
    grep -qF ":$glob" "$mime/globs2" || fail "no file name pattern $glob"
  done
  if command -v gio >/dev/null; then
    # How a GLib file manager sees files: a binary game file by its first bytes, under any name.
    cp "$bin" "$work/Tile.bin"
    cp "$work/converted.xml" "$work/Tile.proxyxml"
    printf 'PK\003\004' >"$work/Pack.ap"
    for pair in "Tile.bin application/x-railworks-serz" "Tile.proxyxml application/x-railworks-xml" \
                "Pack.ap application/x-railworks-ap"; do
      set -- $pair
      seen=$(XDG_DATA_DIRS=$work/share XDG_DATA_HOME=$work/none gio info -a standard::content-type "$work/$1" |
             sed -n 's/^ *standard::content-type: //p')
      [ "$seen" = "$2" ] || fail "$1 is seen as '$seen', not $2"
    done
  else
    skipped "gio is not installed; how a file manager sees the files is not checked"
  fi
else
  skipped "update-mime-database is not installed; the mime types are checked as XML only"
fi
echo "installed programs keep their files in the user's folder; desktop entry and mime types are sound"
