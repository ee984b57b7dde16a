# The Level Editor is set up in the windows by the keyboard alone, from the first start on.
source "$(dirname "$0")/windows.bash"

export HOME=$box/Persön
unset WINEPREFIX XDG_DATA_HOME
practice_at "$box/practice"
setup=$box/practice/packages/'Level Editor setup.zip'
[[ -s $setup ]] || fails "no setup to practise with"
target="$HOME/.local/share/Core Design/trle" # as it is proposed
mkdir -p "$box/home" "$HOME"

open_display 1100x720
start_windows
appears 'Welcome to Kestrova'
press alt+c
appears 'Compress TR Level Editor Setup'
press F1
appears '^ Help$'
press Escape
gone '^ Help$'
appears 'Compress TR Level Editor Setup'
press alt+a
appears 'Select compress trle setup'
chooses "$setup"
appears 'Compress TR Level Editor Setup'
press Return
appears '^Kestrova$' # it will last several minutes
press Return
appears '^Kestrova$' other # it is installed
press Return
appears 'Welcome to Kestrova'
press Return # Start
appears '^Kestrova$' other # is it original?
soon test -s "$target/data/title.tr4"
[[ -s $target/english.dat && -s $target/load.bmp && -x $target/tomb4.exe ]]
[[ -s "$HOME/.local/share/applications/Core Design/Tomb Raider Level Editor/Run Tomb Raider.desktop" ]]
[[ -z $(find "$HOME" -name '.kv~*' ! -name '.kv~lock') ]]
