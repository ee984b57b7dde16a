# A Level Editor that Wine's registry knows is found; nothing is made for it.
source "$(dirname "$0")/common.bash"
export HOME=$box/person
unset WINEPREFIX XDG_DATA_HOME

for words in "editor find x" "editor restore x" "editor finds"; do
    # shellcheck disable=SC2086
    expect 2 $words
done
expect 1 editor find
errs "kestrovactl setup --trle"
expect 1 editor restore
errs "kestrovactl setup --trle"
rm -rf "$box/home"

prefix=$box/person/.wine
mkdir -p "$prefix/drive_c/Core Design"
make_trle "$prefix/drive_c/Core Design/trle"
cat >"$prefix/system.reg" <<'REG'
WINE REGISTRY Version 2

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\winroomedit.exe] 1700000000
@="C:\\core design\\trle\\winroomedit.exe"
REG
expect 0 editor find
said "$prefix/drive_c/Core Design/trle	registry	whole"
expect 0 editor find --json
json 'j[0]["from"] == "registry" and j[0]["prefix"].endswith("/.wine") and j[0]["lacks"] == ""'
[[ ! -e $box/home ]] || die "looking made the home"
rm "$prefix/drive_c/Core Design/trle/tomb4.exe"
expect 0 editor find
said "tomb4.exe"
