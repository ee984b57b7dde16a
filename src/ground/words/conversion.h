#pragma once

#include "words/message.h"

// clang-format off

/// Sounds from one form to another.
namespace kestrova::Msg
{

inline constexpr Message Mp3NotFound{"Mp3 file not found in: "};
inline constexpr Message Mp3NotRead{"Mp3 file cannot be read: "};
inline constexpr Message Mp3IsWave{"This file is called .mp3, but it is a wave. Give its name the ending .wav, and nothing needs to be decoded."};
inline constexpr Message Mp3Silent{"There is no mp3 sound in this file."};
inline constexpr Message Mp3NotWhole{"What came out does not hold the whole sound, so it was thrown away."};
inline constexpr Message DecoderMissing{"Missing mp3 decoder 'madplay.exe'. This utility is necessary to decode mp3 files"};
inline constexpr Message ErrorCopyingWave{"Error copying temporary wav files in : "};
inline constexpr Message EncoderMissing{"Error: missing 'lame.exe' encoder in '~1' folder.~2lame.exe is necessary to encode wavs in mp3 format"};
inline constexpr Message WaveNotStandard{"Error: file '~1' is not standard waw 44100 stereo 16 bits"};
inline constexpr Message StandardForm{"44100 stereo 16 bits"};
inline constexpr Message PcmStandardForm{"PCM 44100 stereo 16 bits"};
inline constexpr Message AdpcmForm{"44100 stereo 4 bits"};
inline constexpr Message MonoForm{"22050 mono 16 bits"};
inline constexpr Message Mp3Form{"Mp3 ~1 Kbps "};
inline constexpr Message Mp3Mono{"Mono"};
inline constexpr Message Mp3Stereo{"Stereo"};
inline constexpr Message WaveCalledMp3{"a wave that is called .mp3; give it the ending .wav"};
inline constexpr Message WaveHeaderDamaged{"a wave whose header is damaged"};
inline constexpr Message Mp3CalledWave{"an mp3 that is called .wav; give it the ending .mp3"};
inline constexpr Message NoMp3Sound{"mp3 without any sound"};
inline constexpr Message StepDecoding{"decoding mp3"};
inline constexpr Message StepToStandard{"converting wav to 44100 stereo 16 bits"};
inline constexpr Message StepToAdpcm{"converting wav to 44100 stereo 4 bits"};
inline constexpr Message StepToMono{"converting wav to 22050 mono 16 bits"};
inline constexpr Message StepEncoding{"encoding wav in mp3 format"};
inline constexpr Message AudioPreparing{"Preparing to convert..."};
inline constexpr Message AudioCannotConvert{"I cannot convert file '~1' from format [~2] to format ["};
inline constexpr Message AudioFirstToStandard{"Convert it to 44100 stereo 16 bits first, and what comes of it to the form that you want. Nothing was converted."};
inline constexpr Message AudioKindUnknown{"The file holds no wave, or one in a form that cannot be converted here. Nothing was converted."};
inline constexpr Message AudioDecoding{"]  Decode ~1 --> WAV ~ stereo 16 bits"};
inline constexpr Message AudioConverting{"]  Convert ~1 --> "};
inline constexpr Message AudioEncoding{"]  Encoding "};
inline constexpr Message ErrorDecoding{"Error decoding '~1' : "};
inline constexpr Message ErrorEncoding{"Error encoding in mp3"};
inline constexpr Message AudioNotCreated{"Target audio file not create"};
inline constexpr Message AudioOntoItself{"'~1' would be written over itself. Nothing was converted. Choose another folder for what comes out."};
inline constexpr Message AudioCutWave{"'~1' is cut: it tells of ~3 bytes of sound, and ~2 are there. Only these were converted."};
inline constexpr Message Mp3NotDecoded{"Too much of this mp3 is damaged: parts of the sound came out silent, so the result was thrown away."};
inline constexpr Message AudioSameName{"'~1' and '~2' both become '~3', which now holds the second of them. The first stays as it was."};
inline constexpr Message AudioAskGoOn{"Error processing file '~1Would you like continue audio conversion?"};
inline constexpr Message AudioErrorAt{"Error ~1 (~2) : "};
inline constexpr Message AudioCancelled{"Break user: conversion cancelled"};
inline constexpr Message AudioTerminated{"Conversion terminated"};
inline constexpr Message AudioStaysAsItIs{"it would stay as it is"};
inline constexpr Message FailedConversion{"Failed conversion: "};
inline constexpr Message ErrorDecodingMp3s{"Error while decoding mp3 files: "};
inline constexpr Message Mp3Automatic{"Automatic"};
inline constexpr Message CannotPlaySound{"The desktop could not open '~1' to listen to it."};
inline constexpr Message ChooseTestWave{"Choose a wav to test mp3 encoding quality"};
inline constexpr Message WaveFilesFilter{"Wave files (*.wav)|*.wav"};

} // namespace kestrova::Msg
