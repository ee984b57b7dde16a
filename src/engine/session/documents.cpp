#include "session/documents.h"

#include "core/text.h"
#include "platform/files.h"
#include "session/file_names.h"
#include "words/session.h"

#include <algorithm>

namespace kestrova
{

bool IsDocument(const Path& file)
{
    platform::FileFacts facts;
    if (platform::LookAtLink(file, facts) || facts.kind == platform::FileKind::Link)
        return false;
    const std::vector<std::string> endings = Split(OnDisk::DocumentEndings, '|');
    return std::any_of(endings.begin(), endings.end(), [&](const std::string& ending) {
        return EndsWithName(file.filename().native(), ending);
    });
}

Status OpenOfLevel(Host& host, Machine& machine, const Path& file)
{
    if (!IsDocument(file) &&
        !host.AskYesNo(
            GetMsg(Msg::AskOpenNoDocument,
                   {TextOf(file.filename()), std::string{lineBreak} + std::string{lineBreak}}),
            Consent::Explicit))
        return MakeFailure(ErrorCode::Stopped, TextOf(file));
    return machine.Open(file.native(), file.parent_path());
}

} // namespace kestrova
