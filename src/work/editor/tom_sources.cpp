#include "editor/tom_sources.h"

#include "audio/wave_header.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_set.h"
#include "editor/file_names.h"
#include "formats/trle_folder.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool EndsInOneOf(const std::string& name, std::string_view endings)
{
    const std::vector<std::string> all = Split(endings, '|');
    return std::any_of(all.begin(), all.end(),
                       [&](const std::string& ending) { return EndsWithName(name, ending); });
}

std::string StemOf(const Path& file)
{
    return StripExtension(file.filename().native());
}

/// Those by whose stem a picture or a text belongs to a wad set.
NameSet StemsOfSets(const std::vector<Path>& files)
{
    NameSet stems;
    for (const Path& file : files)
        for (const std::string_view ending : {OnDisk::TomEnding, OnDisk::WadEnding})
            if (EndsWithName(file.filename().native(), ending))
                stems.Add(StemOf(file));
    return stems;
}

bool IsWadSetFile(const Path& file, const NameSet& stems)
{
    const std::string name = file.filename().native();
    return EndsInOneOf(name, OnDisk::WadSetEndings) ||
           (EndsInOneOf(name, OnDisk::WadSetCompanions) && stems.Has(StemOf(file)));
}

/// The game's `audio` folder has waves of 4 bits a sample alone.
bool IsForAudioFolder(const Path& wave)
{
    constexpr int bitsOfAdpcm = 4;
    WavHeader header;
    (void)ReadWavHeader(wave, header);
    return header.bitsPerSample == bitsOfAdpcm;
}

} // namespace

bool HasTomFiles(const std::vector<Path>& files)
{
    return std::any_of(files.begin(), files.end(), [](const Path& file) {
        return EndsWithName(file.filename().native(), OnDisk::TomEnding);
    });
}

TomSources SourcesAmong(const std::vector<Path>& files)
{
    TomSources sources;
    const NameSet stems = StemsOfSets(files);
    for (const Path& file : files) {
        const std::string name = file.filename().native();
        if (EndsWithName(name, OnDisk::TomEnding))
            sources.toms.push_back(file);
        if (IsWadSetFile(file, stems))
            sources.wads.push_back(file);
        if (!EndsWithName(name, OnDisk::WavExtension))
            continue;
        if (!IsForAudioFolder(file))
            sources.samples.push_back(file);
        else if (!AreDigits(StemOf(file)))
            sources.misplaced.push_back(file);
    }
    return sources;
}

TomSources SourcesOfTom(const TomSources& sources, const Path& tom)
{
    TomSources own = sources;
    own.toms = {tom};
    std::erase_if(own.wads,
                  [&](const Path& file) { return !EqualNames(StemOf(file), StemOf(tom)); });
    return own;
}

Result<Path> TomWithoutWads(const Folders& folders, const TomSources& sources)
{
    NameSet wads;
    for (const Path& file : sources.wads)
        if (EndsWithName(file.filename().native(), OnDisk::WadEnding))
            wads.Add(StemOf(file));
    for (const Path& tom : sources.toms) {
        if (wads.Has(StemOf(tom)))
            continue;
        const auto isThere = IsFile(InFolder(folders.trle, OnDisk::DirWads) /
                                    (StemOf(tom) + std::string{OnDisk::WadEnding}));
        if (!isThere)
            return isThere.Error();
        if (!*isThere)
            return tom;
    }
    return Path{};
}

} // namespace kestrova
