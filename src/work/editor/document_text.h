#pragma once

#include "session/host.h"
#include "tools/tools.h"

/// What a document says, whatever program wrote it.
namespace kestrova
{

/// The words of a text, a page, or a document of Word, RTF or PDF, told apart by content, as UTF-8
/// without regard to how they look. The last three go through an outside tool, within bounds of
/// time and output; where none is installed, or none can read the document, its bytes are taken as
/// they are, but of a PDF, whose failure then says why. What is beyond the first 16 MB is not read.
/// `Stopped` after a Stop.
Result<std::string> ReadDocument(const Tools& tools, const Path& file, ProgressScope& progress);

/// A PDF could be read here.
bool CanReadPdf(const Tools& tools);

} // namespace kestrova
