#include "app/vault_findings.h"

#include "core/size_words.h"
#include "originals/vault.h"
#include "words/originals.h"

#include <numeric>

namespace kestrova
{

void VaultFindings(const Folders& folders, std::vector<Finding>& findings)
{
    const auto kept = KeptFiles(folders);
    if (!kept) {
        findings.push_back({false, GetMsg(Msg::DoctorVault), kept.Error().reason,
                            GetMsg(Msg::OriginalsUnreadable)});
        return;
    }
    const auto bytes =
        std::accumulate(kept->begin(), kept->end(), 0.0, [](double sum, const KeptFile& file) {
            return sum + static_cast<double>(file.size);
        });
    if (!kept->empty())
        findings.push_back(
            {true,
             GetMsg(Msg::DoctorVault),
             GetMsg(Msg::DoctorVaultHolds, {std::to_string(kept->size()), SizeInWords(bytes)}),
             {}});
}

} // namespace kestrova
