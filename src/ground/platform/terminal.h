#pragma once

#include <string>
#include <string_view>
#include <system_error>

/// The terminal that a program was started from, and the signals that come from there.
namespace kestrova::platform
{

enum class Stream { Input = 0, Output = 1, Error = 2 };

bool IsTerminal(Stream stream);
/// All of the text to that stream; `broken_pipe` when the reader has gone.
std::error_code WriteStream(Stream stream, std::string_view text);
/// The next line of the standard input without its line end; False at the end of the input, and
/// when Ctrl-C is pressed.
bool ReadLine(std::string& line);

/// A reader that goes away makes a write fail instead of ending the program.
void IgnoreBrokenPipes();
/// From now on the first Ctrl-C is only noted, and `words` are shown on the standard error; the
/// second one ends the program. So is the wish that the program ends, and the end of its terminal,
/// however often they are told. `words` must outlive the program's work.
void NoteInterrupts(std::string_view words);
bool WasInterrupted();

} // namespace kestrova::platform
