#include "fuzz/bytes.h"

#include <cstdio>
#include <cstdlib>

namespace fuzz {

void defecto(std::string_view que) {
    std::fprintf(stderr, "defecto: %.*s\n", static_cast<int>(que.size()), que.data());
    std::abort();
}

} // namespace fuzz
