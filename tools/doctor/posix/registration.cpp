// There is no automation server here.
#include "tools/doctor/settings_facts.h"

namespace zentaro::tools {

void judgeRegistration(Findings&) {}

}  // namespace zentaro::tools
