#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

/// Numbers by chance that are the same for the same seed on every machine, which the standard
/// library's distributions do not promise. SplitMix64 (Steele, Lea & Flood 2014).
class CDemoRandom
{
public:
    explicit CDemoRandom(std::uint64_t seed)
        : m_nState(seed)
    {
    }

    std::uint64_t Next()
    {
        auto z = (m_nState += 0x9E3779B97F4A7C15U);
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }
    /// From 0 up to but not 1.
    double Share() { return static_cast<double>(Next() >> 11U) * 0x1.0p-53; }
    bool Chance(double probability) { return Share() < probability; }
    /// Both ends included.
    int Between(int least, int most)
    {
        return least + static_cast<int>(Next() % static_cast<std::uint64_t>(most - least + 1));
    }
    double Real(double least, double most) { return least + Share() * (most - least); }
    /// Around a mean, nearly normal (the sum of twelve shares).
    double Around(double mean, double deviation)
    {
        double sum = -6.0;
        for (int i = 0; i < 12; ++i) {
            sum += Share();
        }
        return mean + sum * deviation;
    }
    /// Exponential: many small ones, few large ones.
    double Waiting(double mean) { return -mean * std::log(1.0 - Share()); }
    template <typename List>
    auto const& Pick(List const& list)
    {
        return list[static_cast<std::size_t>(Next() % list.size())];
    }

private:
    std::uint64_t m_nState;
};
