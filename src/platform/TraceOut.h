#pragma once
// Bracketing of nested trace output: a container's trace opens with a Begin call, writes its
// elements, and closes with an End call. The thread-safe pair holds one process-wide lock
// between Begin and End, so that the enclosed writes of concurrent traces don't interleave.

#include <ostream>

namespace harmony::platform {

void TraceOutContainerBegin(std::ostream& out);      // "{ "
void TraceOutContainerBeginEndl(std::ostream& out);  // "{" and a line break
void TraceOutContainerEnd(std::ostream& out);        // " }"
void TraceOutContainerEndl(std::ostream& out);       // a line break between elements
void TraceOutContainerEndEndl(std::ostream& out);    // "}" and a line break
void TraceOutContainerBeginThreadSafe(std::ostream& out);
void TraceOutContainerEndThreadSafe(std::ostream& out);

}  // namespace harmony::platform
