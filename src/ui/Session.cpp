#include "ui/Session.h"

#include <cassert>

namespace hv {

namespace {
Session* g_session = nullptr;
}

Session& session() {
    assert(g_session && "no session installed");
    return *g_session;
}

void Set_Session(Session* s) {
    g_session = s;
}

} // namespace hv
