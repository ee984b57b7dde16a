#include "practice/put_program.h"

#include "core/copying.h"

namespace kestrova
{

Status MakeRunnable(const Path& program)
{
    if (const auto failure = platform::SetMode(program, 0755))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(program), failure);
    return {};
}

Status PutProgram(const Path& program, const Path& place)
{
    const Status copied = CopyFileOver(program, place);
    return copied ? MakeRunnable(place) : copied;
}

} // namespace kestrova
