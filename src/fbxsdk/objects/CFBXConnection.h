// A line from one object to another: the source belongs to, or drives, the destination.
#pragma once

#include <cstdint>
#include <iterator>
#include <string_view>

enum class EFBXConnection : uint8_t
{
    OO, // object to object: a child to its parent, a material to the model that wears it
    OP, // object to property: a texture to a material's "DiffuseColor"
    PO,
    PP
};

struct CFBXConnection
{
    int64_t nSource = 0;
    int64_t nDestination = 0; // 0: the root of the scene
    EFBXConnection eKind = EFBXConnection::OO;
    std::string_view strSourceProperty{};      // of PO and PP, else empty
    std::string_view strDestinationProperty{}; // of OP and PP, else empty

    bool IsFromProperty() const { return eKind == EFBXConnection::PO || eKind == EFBXConnection::PP; }
    bool IsToProperty() const { return eKind == EFBXConnection::OP || eKind == EFBXConnection::PP; }
};

// "OO" and so on; false for anything else.
constexpr bool ReadFBXConnectionKind(std::string_view strKind, EFBXConnection& rKind)
{
    constexpr std::string_view KINDS[] = {"OO", "OP", "PO", "PP"}; // as they are enumerated
    for (uint8_t uiKind = 0; uiKind < std::size(KINDS); ++uiKind)
    {
        if (strKind == KINDS[uiKind])
        {
            rKind = static_cast<EFBXConnection>(uiKind);
            return true;
        }
    }
    return false;
}
