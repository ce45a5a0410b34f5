#include "core/modGlobal.h"

namespace hv {

bool Remote_Mode = false;

} // namespace hv
