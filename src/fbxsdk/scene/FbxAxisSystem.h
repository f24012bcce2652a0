// Which axis is up, which comes towards the viewer, and to which hand the third one points.
#pragma once

class FbxAxisSystem
{
  public:
    enum EUpVector
    {
        eXAxis = 1,
        eYAxis,
        eZAxis
    };

    // Axes are 0 to 2; a sign below 0 is the opposite direction.
    constexpr FbxAxisSystem(int nUpAxis, int nUpSign, int nFrontAxis, int nFrontSign, int nCoordAxis,
                            int nCoordSign)
        : m_eUp(static_cast<EUpVector>(nUpAxis + 1)),
          m_nUpSign(nUpSign < 0 ? -1 : 1),
          m_nFrontAxis(nFrontAxis),
          m_nFrontSign(nFrontSign < 0 ? -1 : 1),
          m_nCoordAxis(nCoordAxis),
          m_nCoordSign(nCoordSign < 0 ? -1 : 1)
    {}

    // The sign is 1 or -1.
    EUpVector GetUpVector(int& rSign) const
    {
        rSign = m_nUpSign;
        return m_eUp;
    }
    int GetFrontAxis(int& rSign) const
    {
        rSign = m_nFrontSign;
        return m_nFrontAxis;
    }
    // To the right of a viewer who has the up axis above and the front axis coming towards them.
    int GetCoordAxis(int& rSign) const
    {
        rSign = m_nCoordSign;
        return m_nCoordAxis;
    }

  private:
    EUpVector m_eUp;
    int m_nUpSign;
    int m_nFrontAxis;
    int m_nFrontSign;
    int m_nCoordAxis;
    int m_nCoordSign;
};
