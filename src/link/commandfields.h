#pragma once

#include <optional>

namespace benthor::link {

/// What a choice of a command puts into the command fields.
struct CommandFields {
    int option; ///< index of the choice
    const char* command;
    const char* expected;              ///< reply that must come back before a body is sent; "": none
    std::optional<const char*> prefix; ///< none: stays as it was
    const char* data;
    int dataLimit;
    const char* trailer;
    const char* replytag;
    int replywidth;
    bool file; ///< the file box is shown: a body follows
};

/// The fields of the choice with that index; null for an index that has no function.
const CommandFields* commandfields(int option);

} // namespace benthor::link
