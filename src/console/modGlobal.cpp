#include "console/modGlobal.h"

namespace hv {

bool Remote_Mode = false;

} // namespace hv
