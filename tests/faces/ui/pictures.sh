#!/usr/bin/env bash
# pictures.sh TEST_UI FOLDER [LANGUAGE]: every window as a picture, in light, dark and high contrast,
# at the usual size and at twice that, for a person to look at.
set -euo pipefail

program=${1:?the program test_ui} folder=${2:?where the pictures go}
for scale in 1 2; do
    mkdir -p "$folder/scale-$scale"
    KESTROVA_LANGUAGE=${3:-en} KESTROVA_PICTURES=$folder/scale-$scale QT_SCALE_FACTOR=$scale QT_QPA_PLATFORM=offscreen \
        "$program" --gtest_filter='EveryWindow.HasItsPicture*'
done
