#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

/// Shows a message with attachments in the desktop's mail program, ready to be sent. False when
/// there is none, or when it could not.
bool SendMail(const ArchiveParts& parts, const std::string& subject, const std::string& body,
              const std::vector<Path>& attachments);

} // namespace kestrova
