// The host build's string table, which LoadStringA finds through the module it is part of.
#include "host.h"

#include <iterator>

const HostString hostStrings[] = {
#define STRING(id, name, text) {id, text},
#include "resources/strings.inc"
#undef STRING
};
const size_t hostStringCount = std::size(hostStrings);
