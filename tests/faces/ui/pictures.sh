#!/usr/bin/env bash
# pictures.sh TEST_UI FOLDER [LANGUAGE]: every window as a picture, in light, dark and high contrast,
# at the usual size and at twice that, for a person to look at.
set -euo pipefail

program=${1:?the program test_ui} folder=${2:?where the pictures go}
for scale in 1 2; do
    mkdir -p "$folder/scale-$scale"
    # As large as a desk's screen: the platform's own one would squeeze every window.
    cat >"$folder/screen.json" <<END
{"screens": [{"name": "desk", "x": 0, "y": 0, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1,
    "width": $((1600 * scale)), "height": $((1000 * scale))}]}
END
    KESTROVA_LANGUAGE=${3:-en} KESTROVA_PICTURES=$folder/scale-$scale QT_SCALE_FACTOR=$scale \
        QT_QPA_PLATFORM=offscreen:configfile=$folder/screen.json \
        "$program" --gtest_filter='EveryWindow.HasItsPicture*'
done
rm "$folder/screen.json"
