// The table of the thirty-two-byte tests: thirty-two copies of every byte.
#include "util/bytefind.hpp"

#if VELMORA_WIDE_BLOCKS
namespace {

constexpr bytefind::WideSplats MakeSplats() {
    bytefind::WideSplats splats{};
    for (int b = 0; b < 256; b++)
        for (char &c : splats.bytes[b])
            c = static_cast<char>(b);
    return splats;
}

} // namespace

const bytefind::WideSplats bytefind::kWideSplats = MakeSplats();
#endif
