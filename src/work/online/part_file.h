#pragma once

#include "core/files.h"
#include "platform/http.h"
#include "session/machine.h"

#include <string>

namespace kestrova
{

/// A download on its way into its file: it is built beside the target, which is the old file until
/// the new one is whole. What came of a download that did not end is kept there under a name that
/// no listing shows, with a note of what it is of, and the next one of the same address goes on
/// with it.
class PartFile : public platform::HttpSink
{
public:
    PartFile(Machine& machine, std::string url, const Path& target);
    ~PartFile() override;
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    /// Takes over what an earlier download left; needed before the others.
    Status Open();
    /// What a request for the rest has to say.
    [[nodiscard]] std::uint64_t From() const { return size_; }
    [[nodiscard]] const std::string& Validator() const { return validator_; }

    /// The server knows nothing behind what is there: it can be gone on with by nobody.
    [[nodiscard]] bool IsUseless() const { return useless_; }
    /// Begins with nothing.
    Status Restart() { return CreateNew(); }
    /// An answer has come that this file was prepared for.
    [[nodiscard]] bool HasBegun() const { return begun_; }

    /// Room is looked at here, where the server tells the whole size.
    std::error_code Begin(const platform::HttpAnswer& answer) override;
    std::error_code Take(std::span<const std::byte> bytes) override;

    /// The target is the new file.
    Status Commit();
    /// Keeps what came for the next time, where the server gave a mark to go on by. True when the
    /// next download of the address goes on from there.
    bool Keep();

private:
    [[nodiscard]] Path Part() const;
    [[nodiscard]] Path Note() const;
    /// True when there is a part of this very address, which is this download's from now on.
    bool ClaimPart();
    Status CreateNew();

    Machine& machine_;
    std::string url_;
    Path target_;
    platform::FileFacts replaced_;
    Path staged_;
    platform::File file_;
    std::uint64_t size_ = 0;
    std::string validator_;
    bool begun_ = false;
    bool useless_ = false;
    bool page_ = false; ///< the server's page about an error, which is gone on with by nobody
};

} // namespace kestrova
