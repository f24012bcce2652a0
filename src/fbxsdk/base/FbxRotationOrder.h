// In which order the three angles of a rotation are applied.
#pragma once

// The values are those of the files, which may have others. eEulerXYZ turns about X first, about Z last.
enum EFbxRotationOrder : int
{
    eEulerXYZ,
    eEulerXZY,
    eEulerYZX,
    eEulerYXZ,
    eEulerZXY,
    eEulerZYX,
    eSphericXYZ // interpolated otherwise; at one moment the same as eEulerXYZ
};

// The axes (0 to 2) of an order, that applied first at the front. Of an unknown order those of eEulerXYZ.
struct FbxRotationAxes
{
    int m_arrAxes[3];

    static constexpr bool IsOrder(EFbxRotationOrder eOrder)
    {
        return eOrder >= eEulerXYZ && eOrder <= eSphericXYZ;
    }
    static constexpr FbxRotationAxes Of(EFbxRotationOrder eOrder)
    {
        switch (eOrder)
        {
        case eEulerXZY:
            return {{0, 2, 1}};
        case eEulerYZX:
            return {{1, 2, 0}};
        case eEulerYXZ:
            return {{1, 0, 2}};
        case eEulerZXY:
            return {{2, 0, 1}};
        case eEulerZYX:
            return {{2, 1, 0}};
        default:
            return {{0, 1, 2}};
        }
    }
};
