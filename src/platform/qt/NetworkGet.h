#pragma once
// The desktop's HTTP GET: synchronous for its caller, with a time-out. The user-interface thread waits in
// a local event loop that takes no user input, so the windows stay painted and nothing else is started.
#include "platform/Platform.h"

namespace hv {

// Reached with the status and body when the server answered with any HTTP status; not reached when it
// could not be connected, closed the connection without an answer, or gave none within timeoutMs.
HttpAnswer Network_Get(const QString& url, int timeoutMs);

} // namespace hv
