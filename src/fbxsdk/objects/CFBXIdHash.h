// Spreads the ids of objects over the places of a hash table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

// Differs from process to process: ids are a file's own choice, and must not all meet in one place.
struct CFBXIdHash
{
    size_t operator()(int64_t nId) const
    {
        static const uint64_t s_uiSeed = [] {
            std::random_device objDevice;
            return (uint64_t{objDevice()} << 32) | objDevice();
        }();
        // The finaliser of splitmix64 (S. Vigna).
        uint64_t uiHash = static_cast<uint64_t>(nId) ^ s_uiSeed;
        uiHash = (uiHash ^ (uiHash >> 30)) * 0xBF58476D1CE4E5B9;
        uiHash = (uiHash ^ (uiHash >> 27)) * 0x94D049BB133111EB;
        return uiHash ^ (uiHash >> 31);
    }
};
