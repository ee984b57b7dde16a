#pragma once

#include "words/message.h"

// clang-format off

/// Screen-shots.
namespace kestrova::Msg
{

inline constexpr Message ShotAskWhich{"Execute command on LEFT screenshot? ~1(Click on NO if you refer to right screenshot)~2(Note: you can use command on specific screenshot clicking right mouse button above screenshot image)"};
inline constexpr Message ShotNotDelete{"This is a default screen-shot, you can not delete it :-)"};
inline constexpr Message ShotNotRename{"This is a default screen-shot, you can not rename it :-)"};
inline constexpr Message ShotNotResize{"This is a default screen-shot, you can not resize it :-)"};
inline constexpr Message ShotNotCover{"This is a default screen-shot, which cannot be a cover. Add a screen-shot of the level, and choose that one."};
inline constexpr Message ShotNotSave{"This is a default screen-shot, you can not save it :-)"};
inline constexpr Message ShotAskDelete{"Delete screen-shot "};
inline constexpr Message ShotDeleteFailed{"The screen-shot could not be deleted. It is still there."};
inline constexpr Message ShotRenameTitle{"Rename screen-shot"};
inline constexpr Message ShotRenamePrompt{"Type new name for screenshot"};
inline constexpr Message ShotRenameBadName{"'~1' can not be the name of a picture. The screen-shot keeps its name. Choose a name without a folder, a colon or a line end."};
inline constexpr Message ShotRenameTaken{"There is already a picture with name '~1' in this folder. Both are untouched. Choose another name."};
inline constexpr Message ShotRenameFailed{"The screen-shot could not be renamed. It keeps its name."};
inline constexpr Message ShotAddTitle{"Select an image to add in screen-shot list"};
inline constexpr Message ShotAddFilter{"Images (*.jpg) (*.bmp)|*.jpg;*.bmp"};
inline constexpr Message ShotAddOtherKind{"'~1' would not be listed: only files whose names end in .jpg or .bmp are. Nothing has been changed."};
inline constexpr Message ShotAddNoPicture{"'~1' could not be added: there is no picture in it that can be shown. It may be damaged or not fully downloaded. Nothing has been changed."};
inline constexpr Message ShotAskOverwrite{"Warning: there is already a screenshot with name '~1' in screenshot list of current level.~2Do you want overwrite old image?~3(Note: if you choose NO, new image will be saved with new automatic name to avoid any overwritting)"};
inline constexpr Message ShotSavedAs{"Screenshot '~1' saved in screenshot list as '"};
inline constexpr Message ShotAddFailed{"The picture could not be added. The screenshot list is as it was."};
inline constexpr Message ShotSaveTitle{"Save current screenshot"};
inline constexpr Message ShotSaveFilterBmp{"File bitmap (*.bmp)|*.bmp"};
inline constexpr Message ShotSaveFilterJpg{"File jpeg (*.jpg)|*.jpg"};
inline constexpr Message ShotImportFailed{"Error while copying file: "};
inline constexpr Message ShotImportArrow{" -> "};
inline constexpr Message ShotImportUnread{"The savegame folders of level '~1' could not be looked through. Nothing of them has been imported."};
inline constexpr Message ReasonShotReplaced{"replaced by another picture"};
inline constexpr Message ReasonShotDeleted{"picture deleted"};
inline constexpr Message ShotNotKept{"The picture '~1' could not be kept in the history, so it stays, and nothing has been changed. Make room on the disk, and try again."};
inline constexpr Message ResizeSaveTitle{"Save resized scree-shot"};
inline constexpr Message ResizeSaveFilter{"Jpeg Images (*.jpg)|*.jpg|Bitmap Images (*.bmp)|*.bmp"};
inline constexpr Message ResizeConvertFailed{"Error converting image from .bmp to .jpg"};
inline constexpr Message ResizeWriteFailed{"The resized picture could not be written. The screen-shot itself is untouched."};
inline constexpr Message ShotSize480{"   480 X 360"};
inline constexpr Message ShotSize440{"   440 X 330"};
inline constexpr Message ShotSize400{"   400 X 300"};
inline constexpr Message ShotSize360{"   360 X 270"};
inline constexpr Message ShotSize320{"   320 X 240"};
inline constexpr Message ShotSize240{"   240 X 180"};
inline constexpr Message ShotSize200{"   200 X 150"};
inline constexpr Message ShotSize160{"   160 X 120"};
inline constexpr Message GameWindowTitle{"Tomb Raider - The Last Revelation"};
inline constexpr Message CaptureSaveTitle{"Save captured screen-shot"};
inline constexpr Message CaptureSaveFilter{"File jpg (*.jpg)|*.jpg"};
inline constexpr Message CaptureSaveFailed{"Error while saving captured screen-shot in : ~1Error: "};

} // namespace kestrova::Msg
