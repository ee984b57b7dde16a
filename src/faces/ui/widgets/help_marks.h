#pragma once

class QPlainTextEdit;

namespace kestrova
{

/// Shows the help's topics, sub-topics and tags in letters of their own; of a text so large that
/// this would take long nothing is marked.
void MarkTopics(QPlainTextEdit& text);

} // namespace kestrova
