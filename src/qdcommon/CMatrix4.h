// A 4x4 matrix as it stands in files and parameters.
#pragma once

// Maps row vectors: v' = v * M, so that the translation stands in row 3. Stored row by row; the identity by
// default.
struct CMatrix4
{
    float m[4][4] = {{1.0f, 0.0f, 0.0f, 0.0f},
                     {0.0f, 1.0f, 0.0f, 0.0f},
                     {0.0f, 0.0f, 1.0f, 0.0f},
                     {0.0f, 0.0f, 0.0f, 1.0f}};

    bool operator==(const CMatrix4&) const = default;
};
