// What the slopes of an animation curve are, key by key.
#pragma once

#include "fbxsdk/animation/CFBXAnimCurveReader.h"
#include "fbxsdk/animation/FbxAnimCurve.h"

#include <span>
#include <vector>

class CFBXTangentSolver
{
  public:
    // As MotionBuilder and Maya show the same keys.
    static std::vector<FbxAnimCurveKey> Solve(std::span<const CFBXAnimKey> arrKeys);

  private:
    // A key between its neighbours. At the ends of the curve the neighbour that is not there lies on the
    // line through the one that is.
    struct SSurroundings
    {
        bool bLeft = false; // there is one
        bool bRight = false;
        double dLeftSlope = 0; // of the lines to the neighbours
        double dRightSlope = 0;
        double dAcrossSlope = 0; // from neighbour to neighbour
        double dLeftWeight = 0;
        double dRightWeight = 0;
    };

    static SSurroundings Look(std::span<const CFBXAnimKey> arrKeys, size_t n);
    static void SetSlopes(const CFBXAnimKey& rKey, const CFBXAnimKey* pBefore, const SSurroundings& rAround,
                          FbxAnimCurveKey& rResult);
    static void SetTCBSlopes(const CFBXAnimKey& rKey, const SSurroundings& rAround, FbxAnimCurveKey& rResult);
    static double GetAutoSlope(uint32_t uiFlags, const SSurroundings& rAround, double dBias);
    static double GetClampedSlope(const SSurroundings& rAround);
};
