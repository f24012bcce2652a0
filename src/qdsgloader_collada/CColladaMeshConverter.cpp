#include "qdsgloader_collada/CColladaMeshConverter.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/geometry/CSGGeom_Lines.h"
#include "qdscenegraph/geometry/CSGGeom_Triangles.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CDeindexer.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

namespace
{

using CGeomPtr = boost::intrusive_ptr<CSGGeom>;

constexpr int64_t MAX_INT32 = std::numeric_limits<int32_t>::max();

// For messages; what is larger is too large in any case.
int ToInt(uint64_t uiNumber) { return static_cast<int>(std::min<uint64_t>(uiNumber, MAX_INT32)); }

// A product that stays at its largest value instead of overflowing.
uint64_t Multiply(uint64_t a, uint64_t b)
{
    uint64_t uiProduct = 0;
    return __builtin_mul_overflow(a, b, &uiProduct) ? std::numeric_limits<uint64_t>::max() : uiProduct;
}

// What every kind must have before anything else is looked at.
template <class DOM>
bool CheckElement(const DOM& rElement, const char* szElement, const char* szPlural)
{
    if (rElement.getP() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<%s> had NULL <p>", szElement);
        return false;
    }
    if (rElement.getCount() == 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "<%s> had 0 %s", szElement, szPlural);
        return false;
    }
    return true;
}

// One past the largest offset; offsets that cannot be used are reported with their input.
int32_t GetIndicesPerVertex(const domInputLocalOffset_Array& rInputs)
{
    int32_t nIndicesPerVertex = 0;
    for (const auto& rspInput : AsSpan(rInputs))
    {
        const int32_t nOffset = ToInt32(rspInput->getOffset());
        if (nOffset < MAX_INT32)
        {
            nIndicesPerVertex = std::max(nIndicesPerVertex, nOffset + 1);
        }
    }
    return nIndicesPerVertex;
}

bool CheckLength(const char* szElement, uint64_t uiIndices, int32_t nIndicesPerVertex, uint64_t uiVertices,
                 const char* szVertices, uint64_t uiCount, const char* szPlural)
{
    const uint64_t uiExpected =
        Multiply(Multiply(static_cast<uint64_t>(nIndicesPerVertex), uiVertices), uiCount);
    if (uiIndices != uiExpected)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "<%s> had %d primitive indices, which is different than the expected %d which is %d inputs per "
            "vertex * %d vertices per %s * %d %s",
            szElement, ToInt(uiIndices), ToInt(uiExpected), nIndicesPerVertex, ToInt(uiVertices), szVertices,
            ToInt(uiCount), szPlural);
        return false;
    }
    return true;
}

// Whether the numbers of vertices fit the index list; it may be shorter or longer than the elements that
// describe it say.
bool CheckPolylistLength(const domPolylist& rPolylist, std::span<const domUint> arrVCounts,
                         uint64_t uiIndices, int32_t nIndicesPerVertex)
{
    if (arrVCounts.size() != rPolylist.getCount())
    {
        Log(QD_COLLADA, LOG_ERROR, "<polylist> had %d polys but %d values in <vcount>",
            ToInt(rPolylist.getCount()), ToInt(arrVCounts.size()));
        return false;
    }
    const domUint uiFirst = arrVCounts.front();
    if (std::ranges::all_of(arrVCounts, [=](domUint ui) { return ui == uiFirst; }))
    {
        return CheckLength("polylist", uiIndices, nIndicesPerVertex, uiFirst, "poly", rPolylist.getCount(),
                           "polys");
    }
    uint64_t uiVertices = 0;
    for (const domUint uiVCount : arrVCounts)
    {
        uiVertices += std::min<uint64_t>(uiVCount, MAX_INT32);
    }
    const uint64_t uiExpected = Multiply(uiVertices, static_cast<uint64_t>(nIndicesPerVertex));
    if (uiIndices != uiExpected)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "<polylist> had %d primitive indices, which is different than the expected %d which is %d inputs "
            "per vertex * %d vertices of all polys",
            ToInt(uiIndices), ToInt(uiExpected), nIndicesPerVertex, ToInt(uiVertices));
        return false;
    }
    return true;
}

// The triangles (0, 1, 2), (0, 2, 3), ... of every polygon, as many corners as the polygons have altogether.
// False (reported) for a polygon of less than three.
bool MakeFans(std::span<const domUint> arrVCounts, std::span<const int32_t> arrCorners,
              std::vector<int32_t>& rvecIndices)
{
    size_t nNumTriangles = 0;
    for (const domUint nVCount : arrVCounts)
    {
        QD_ASSERT(nVCount >= 3, false);
        nNumTriangles += nVCount - 2;
    }
    rvecIndices.resize(nNumTriangles * 3);
    auto itIndex = rvecIndices.begin();
    const int32_t* pCorners = arrCorners.data();
    for (const domUint nVCount : arrVCounts)
    {
        for (domUint n = 2; n < nVCount; ++n)
        {
            *itIndex++ = pCorners[0];
            *itIndex++ = pCorners[n - 1];
            *itIndex++ = pCorners[n];
        }
        pCorners += nVCount;
    }
    return true;
}

template <class GEOM>
CGeomPtr MakeIndexedGeom(const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer, const char* szElement,
                         const char* szKind, const char* szSuffix)
{
    if (!spIndexBuffer)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create an index buffer for <%s>", szElement);
        return nullptr;
    }
    CGeomPtr spGeom = GEOM::Create(spIndexBuffer);
    if (!spGeom)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create a %s scene graph geometry for <%s>%s", szKind, szElement,
            szSuffix);
    }
    return spGeom;
}

void LogIgnored(const daeArray& rElements, const char* szElement, const domMesh& rMesh)
{
    if (rElements.getCount() > 0)
    {
        Log(QD_COLLADA, LOG_WARNING, "Ignoring %d <%s> elements in <mesh id=\"%s\">", CountOf(rElements),
            szElement, GetIDText(rMesh));
    }
}

} // namespace

bool CColladaMeshConverter::LoadMesh(domMesh& rMesh, CColladaGeometrySet& rSet)
{
    const auto LoadAll = [&](const auto& rElements, const char* szElement, auto fnLoad, bool bReportLoad) {
        for (size_t n = 0; n < rElements.getCount(); ++n)
        {
            const CGeometryPtr spGeometry = fnLoad(*rElements[n]);
            const char* szID = GetIDText(*rElements[n]);
            if (!spGeometry && bReportLoad)
            {
                Log(QD_COLLADA, LOG_ERROR, "Failed to load <%s id=\"%s\"> at index %d under <mesh id=\"%s\">",
                    szElement, szID, static_cast<int>(n), GetIDText(rMesh));
                return false;
            }
            if (!rSet.AddGeometry(spGeometry))
            {
                Log(QD_COLLADA, LOG_ERROR,
                    "Failed to add geometry for <%s id=\"%s\"> at index %d under <mesh id=\"%s\">", szElement,
                    szID, static_cast<int>(n), GetIDText(rMesh));
                return false;
            }
        }
        return true;
    };
    if (!LoadAll(
            rMesh.getLines_array(), "lines", [this](domLines& r) { return LoadLines(r); }, true) ||
        !LoadAll(
            rMesh.getPolylist_array(), "polylist", [this](domPolylist& r) { return LoadPolylist(r); },
            true) ||
        !LoadAll(
            rMesh.getTriangles_array(), "triangles", [this](domTriangles& r) { return LoadTriangles(r); },
            false))
    {
        return false;
    }
    LogIgnored(rMesh.getLinestrips_array(), "linestrips", rMesh);
    LogIgnored(rMesh.getPolygons_array(), "polygons", rMesh);
    LogIgnored(rMesh.getTrifans_array(), "trifans", rMesh);
    LogIgnored(rMesh.getTristrips_array(), "tristrips", rMesh);
    LogIgnored(rMesh.getExtra_array(), "extra", rMesh);
    return true;
}

// fnCheckLength(number of indices, indices per vertex) says whether the index list is complete;
// fnMakeGeom(de-indexer) makes the scene-graph geometry. Both report.
template <class DOM, class CHECK, class MAKE>
CColladaMeshConverter::CGeometryPtr CColladaMeshConverter::LoadPrimitives(DOM& rElement,
                                                                          const char* szElement,
                                                                          CHECK fnCheckLength,
                                                                          MAKE fnMakeGeom)
{
    const int32_t nIndicesPerVertex = GetIndicesPerVertex(rElement.getInput_array());
    if (nIndicesPerVertex == 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "<%s> had 0 indices per vertex", szElement);
        return nullptr;
    }
    CDeindexer objDeindexer(nIndicesPerVertex, m_rDataSources);
    for (const auto& rspInput : AsSpan(rElement.getInput_array()))
    {
        if (!objDeindexer.AddInput(*rspInput))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to add <input> to helper object in <%s>", szElement);
            return nullptr;
        }
    }
    domListOfUInts& rIndices = rElement.getP()->getValue();
    if (!fnCheckLength(rIndices.getCount(), nIndicesPerVertex))
    {
        return nullptr;
    }
    if (!objDeindexer.DeindexPrimitives(AsSpan(rIndices)))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to deindex primitives for <%s>", szElement);
        return nullptr;
    }
    rIndices.clear(); // a primitive is converted once, and its list is most of what it takes up
    const auto spVertexBuffer = objDeindexer.CreateVertexBuffer();
    if (!spVertexBuffer)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create a vertex buffer for <%s>", szElement);
        return nullptr;
    }
    const CGeomPtr spGeom = fnMakeGeom(objDeindexer);
    if (!spGeom)
    {
        return nullptr;
    }
    const auto spBinding = CSGGeomBinding::Create(spGeom, spVertexBuffer->GetVertexBuffer());
    if (!spBinding)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create a scene graph geometry binding for <%s>", szElement);
        return nullptr;
    }
    CGeometryPtr spGeometry =
        CColladaGeometry::Create(spBinding, spVertexBuffer, Text(rElement.getMaterial()));
    if (!spGeometry)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create collada geometry for <%s>", szElement);
    }
    return spGeometry;
}

CColladaMeshConverter::CGeometryPtr CColladaMeshConverter::LoadLines(domLines& rLines)
{
    if (!CheckElement(rLines, "lines", "lines"))
    {
        return nullptr;
    }
    return LoadPrimitives(
        rLines, "lines",
        [&](size_t nIndices, int32_t nIndicesPerVertex) {
            return CheckLength("lines", nIndices, nIndicesPerVertex, 2, "line", rLines.getCount(), "lines");
        },
        [](const CDeindexer& rDeindexer) {
            return MakeIndexedGeom<CSGGeom_Lines>(rDeindexer.CreateIndexBuffer(), "lines", "lines", "");
        });
}

CColladaMeshConverter::CGeometryPtr CColladaMeshConverter::LoadTriangles(domTriangles& rTriangles)
{
    if (!CheckElement(rTriangles, "triangles", "triangles"))
    {
        return nullptr;
    }
    return LoadPrimitives(
        rTriangles, "triangles",
        [&](size_t nIndices, int32_t nIndicesPerVertex) {
            return CheckLength("triangles", nIndices, nIndicesPerVertex, 3, "triangle", rTriangles.getCount(),
                               "triangles");
        },
        [](const CDeindexer& rDeindexer) {
            return MakeIndexedGeom<CSGGeom_Triangles>(rDeindexer.CreateIndexBuffer(), "triangles",
                                                      "triangles", "");
        });
}

CColladaMeshConverter::CGeometryPtr CColladaMeshConverter::LoadPolylist(domPolylist& rPolylist)
{
    if (!CheckElement(rPolylist, "polylist", "polys"))
    {
        return nullptr;
    }
    const domPolylist::domVcount* pVCount = rPolylist.getVcount();
    const std::span<const domUint> arrVCounts =
        pVCount != nullptr ? AsSpan(pVCount->getValue()) : std::span<const domUint>();
    if (arrVCounts.empty())
    {
        Log(QD_COLLADA, LOG_ERROR, "<polylist> had NULL <vcount>");
        return nullptr;
    }
    if (std::ranges::find(arrVCounts, domUint{0}) != arrVCounts.end())
    {
        Log(QD_COLLADA, LOG_ERROR, "<polylist> had a poly with 0 vertices");
        return nullptr;
    }
    const auto MakeGeom = [&](const CDeindexer& rDeindexer) -> CGeomPtr {
        if (std::ranges::all_of(arrVCounts, [](domUint ui) { return ui == 3; }))
        {
            return MakeIndexedGeom<CSGGeom_Triangles>(rDeindexer.CreateIndexBuffer(), "polylist", "triangles",
                                                      " with 3 vertices per poly");
        }
        Log(QD_COLLADA, LOG_WARNING,
            "NOT-TRIANGULATED!!!  %s => Encountered a <polylist> that was not all triangles.  Converting to "
            "triangles, but might be inaccurate.  Triangulating on export would be better.",
            m_szGeometryID);
        std::vector<int32_t> vecIndices;
        if (!MakeFans(arrVCounts, rDeindexer.GetCornerVertices(), vecIndices))
        {
            return nullptr;
        }
        return MakeIndexedGeom<CSGGeom_Triangles>(rDeindexer.CreateIndexBuffer(vecIndices), "polylist",
                                                  "triangles", "");
    };
    return LoadPrimitives(
        rPolylist, "polylist",
        [&](size_t nIndices, int32_t nIndicesPerVertex) {
            return CheckPolylistLength(rPolylist, arrVCounts, nIndices, nIndicesPerVertex);
        },
        MakeGeom);
}
