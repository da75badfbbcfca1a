#include "session/process.h"

namespace benthor {

Process& process() {
    static Process values;
    return values;
}

} // namespace benthor
