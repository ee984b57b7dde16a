#include "practice/make_content.h"

#include "core/text.h"
#include "pictures/bitmap.h"
#include "pictures/jpeg.h"
#include "practice/game_data.h"
#include "practice/music.h"
#include "practice/practice_script.h"
#include "practice/scene.h"
#include "practice/sounds.h"

namespace kestrova
{

namespace
{

std::string TextFile(Message row)
{
    return ToWindows1252(ReplaceAll(std::string{row.text}, "~1", lineBreak));
}

} // namespace

std::string MakeContent(const PracticeItem& item, const std::string& title, int style,
                        std::uint64_t seed, double scale)
{
    const int otherView = (style + 2) % sceneStyles;
    switch (item.content) {
    case Content::GameData:
        return MakeGameData(seed, static_cast<std::size_t>(item.size * 1000.0 * scale));
    case Content::Tune:
        return TuneWave(seed, item.size * 0.1 * scale);
    case Content::Script:
        return PracticeScript(title);
    case Content::ScriptOf:
        return CompiledPracticeScript(TextFile(item.text));
    case Content::LoadPicture:
        return EncodeBitmap(PaintScene(title, style));
    case Content::Text:
        return TextFile(item.text);
    case Content::Language:
        return CompiledPracticeLanguage(TextFile(item.text));
    case Content::Jpeg: {
        // The painted view always has a size that a jpeg can have.
        return EncodeJpeg(PaintScene({}, style)).Value();
    }
    case Content::Bitmap:
        return EncodeBitmap(PaintScene({}, otherView, 320, 240));
    case Content::Sample:
        return SampleWave(seed, item.size * 0.1);
    case Content::Silence:
        return SilentMp3(item.size);
    }
    return {};
}

std::uint64_t FirstSeedOf(const PracticeLevel& level)
{
    return static_cast<std::uint64_t>(level.style) * 1000 + 1;
}

} // namespace kestrova
