// The generator of java.util.Random, so that generated data (the demo company, the benchmark's
// trips) equal what the earlier version of the program generated from the same seed.
#pragma once

#include <cstdint>

namespace company {

// Seed scrambled with the multiplier, 48-bit state.
class Lcg48 {
public:
    explicit Lcg48(long long seed) : state_((static_cast<uint64_t>(seed) ^ Mult) & Mask) {}
    int nextInt(int bound) {
        int r = next(31);
        int m = bound - 1;
        if ((bound & m) == 0) return static_cast<int>((static_cast<int64_t>(bound) * r) >> 31);
        for (int u = r;; u = next(31)) {
            r = u % bound;
            if (static_cast<int64_t>(u) - r + m <= INT32_MAX) return r;
        }
    }
    double nextDouble() {
        int64_t hi = next(26);
        int64_t lo = next(27);
        return static_cast<double>((hi << 27) + lo) * 0x1.0p-53;
    }
    bool nextBoolean() { return next(1) != 0; }

private:
    static constexpr uint64_t Mult = 0x5DEECE66DULL;
    static constexpr uint64_t Mask = (1ULL << 48) - 1;
    int next(int bits) {
        state_ = (state_ * Mult + 0xB) & Mask;
        return static_cast<int>(static_cast<uint32_t>(state_ >> (48 - bits)));
    }
    uint64_t state_;
};

}  // namespace company
