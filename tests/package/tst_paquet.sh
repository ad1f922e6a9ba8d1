#!/usr/bin/env bash
# The Debian package, as an office would install it: made with CPack from this build, unpacked
# into a scratch root, its program run from there, and its files checked with Debian's own tools.
# Usage: tst_paquet.sh BUILD_DIR
set -euo pipefail
build=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

(cd "$build" && cpack -G DEB -B "$scratch/cpack" >"$scratch/cpack.log" 2>&1) || { cat "$scratch/cpack.log"; fail "cpack"; }
deb=$(ls "$scratch"/cpack/quadrella_*.deb)
root=$scratch/root
dpkg-deb -x "$deb" "$root"

# The control data: dependencies worked out from the shared libraries, plus the SQLite plug-in.
depends=$(dpkg-deb -f "$deb" Depends)
for lib in libqt6widgets6 libqt6sql6 libqt6sql6-sqlite libsqlite3-0; do
  grep -q "$lib" <<<"$depends" || fail "Depends lacks $lib: $depends"
done
[ "$(dpkg-deb -f "$deb" Section)" = misc ] || fail "section"

# Every file where a desktop finds it.
for f in usr/bin/quadrella \
         usr/share/applications/org.example.quadrella.desktop \
         usr/share/metainfo/org.example.quadrella.metainfo.xml \
         usr/share/icons/hicolor/256x256/apps/quadrella.png \
         usr/share/icons/hicolor/scalable/apps/quadrella.svg \
         usr/share/man/man1/quadrella.1.gz \
         usr/share/bash-completion/completions/quadrella \
         usr/share/quadrella/manual/QuadrellaV01CT.html \
         usr/share/quadrella/translations/shell.tsv \
         usr/share/doc/quadrella/copyright; do
  [ -e "$root/$f" ] || fail "missing $f"
done

# The installed program runs from there.
bin=$root/usr/bin/quadrella
"$bin" --version | grep -q "^Quadrella [0-9]" || fail "--version"
data=$scratch/data
QT_QPA_PLATFORM=offscreen "$bin" --data-dir "$data" init --sample >/dev/null || fail "init --sample"
[ -s "$data/QuadrellaV01.db" ] || fail "no database after init"
"$bin" --data-dir "$data" job show --id 1 >/dev/null || fail "no sample job"

# The manual page lists every command of --help.
man=$(zcat "$root/usr/share/man/man1/quadrella.1.gz")
for cmd in $("$bin" --help | awk '$1 == "quadrella" { print $2 }' | sort -u); do
  grep -q "^quadrella \\\\fB$cmd\\\\fR" <<<"$man" || fail "man page lacks the command $cmd"
done
if command -v man >/dev/null; then
  MANWIDTH=80 man -l "$root/usr/share/man/man1/quadrella.1.gz" 2>"$scratch/man.err" >/dev/null
  [ ! -s "$scratch/man.err" ] || { cat "$scratch/man.err"; fail "man page warnings"; }
fi

# Debian's validators, where they are installed.
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$root/usr/share/applications/org.example.quadrella.desktop" || fail "desktop file"
fi
if command -v appstreamcli >/dev/null; then
  appstreamcli validate --no-net "$root/usr/share/metainfo/org.example.quadrella.metainfo.xml" || fail "AppStream file"
fi
if command -v lintian >/dev/null; then
  lintian --tag-display-limit 0 "$deb" >"$scratch/lintian.txt" 2>&1 || true
  cat "$scratch/lintian.txt"
  ! grep -q '^E:' "$scratch/lintian.txt" || fail "lintian errors"
fi
echo "package ok: $(basename "$deb")"
