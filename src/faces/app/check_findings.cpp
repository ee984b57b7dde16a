#include "app/check_findings.h"

#include "core/name_list.h"
#include "core/text.h"
#include "upkeep/last_check.h"
#include "words/check.h"

namespace kestrova
{

void CheckFindings(const Folders& folders, const Archive& archive, std::vector<Finding>& findings)
{
    std::vector<std::string> codes;
    for (const LevelCode code : HarmedAtLastCheck(folders, archive))
        codes.push_back(ZeroPadded(code, 4));
    if (!codes.empty())
        findings.push_back({false, GetMsg(Msg::DoctorChecked),
                            GetMsg(Msg::DoctorCheckedHarmed, {ShownNames(codes)}),
                            GetMsg(Msg::DoctorCheckedRemedy)});
}

} // namespace kestrova
