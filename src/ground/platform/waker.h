#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kestrova::platform
{

/// A descriptor that becomes readable when something has happened, so that nobody has to look again
/// and again. Without a value where the system has no such thing.
class Waker
{
public:
    /// The end of a process, ours or another's; readable ever after.
    static Waker OnEndOf(std::int64_t pid);
    /// A file that lies in the folder itself was opened, as it is when a program is started from
    /// it.
    static Waker OnOpenIn(const std::filesystem::path& folder);

    Waker() = default;
    ~Waker() { Close(); }
    Waker(Waker&& other) noexcept : descriptor_(other.descriptor_) { other.descriptor_ = -1; }
    Waker& operator=(Waker&& other) noexcept;
    Waker(const Waker&) = delete;
    Waker& operator=(const Waker&) = delete;

    [[nodiscard]] bool Works() const { return descriptor_ >= 0; }
    [[nodiscard]] int Descriptor() const { return descriptor_; }
    /// The names of the files that were opened since the last question.
    [[nodiscard]] std::vector<std::string> Opened() const;

private:
    explicit Waker(int descriptor) : descriptor_(descriptor) {}
    void Close();

    int descriptor_ = -1;
};

} // namespace kestrova::platform
