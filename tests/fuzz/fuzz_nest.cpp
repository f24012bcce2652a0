// Damaged NEST files: no crash, no hang, nothing left behind, no memory beyond a small multiple of the file.
//
// fuzz_nest [COUNT]: truncations at every byte and COUNT (10 000) mutations of a small file that holds every
// class.

#include "CMutator.h"
#include "UseScene.h"

#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdscenegraph/geometry/CSGData_GeomBounds.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/geometry/CSGGeom_Lines.h"
#include "qdscenegraph/geometry/CSGGeom_PrimList.h"
#include "qdscenegraph/geometry/CSGGeom_Quads.h"
#include "qdscenegraph/geometry/CSGGeom_Triangles.h"
#include "qdscenegraph/geometry/CSGPrim_Polygon.h"
#include "qdscenegraph/geometry/CSGPrim_Quad.h"
#include "qdscenegraph/geometry/CSGPrim_Triangle.h"
#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_LookAt.h"
#include "qdscenegraph/transform/CSGXFrm_Pair.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"
#include "qdscenegraph/transform/CSGXFrm_Scale.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"

#include <cstdio>
#include <cstdlib>

namespace
{

void AddGeometry(CSGNode* pNode)
{
    CSGVertexFormat objFormat;
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3);
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_TEXCOORD, 0, 2);
    const auto spBuffer = CSGVertexBuffer::Create(objFormat, 5);
    const auto spTriangles = CSGGeom_Triangles::Create(CSGIndexBuffer::Create(6, 4));
    const auto spQuads = CSGGeom_Quads::Create(CSGIndexBuffer::Create(4, 4));
    const auto spLines = CSGGeom_Lines::Create(CSGIndexBuffer::Create(2, 70000));
    const auto spPrims = CSGGeom_PrimList::Create();
    constexpr int32_t INDICES[] = {0, 1, 2, 3, 4};
    spPrims->AddPrimitive(CSGPrim_Triangle::Create(std::span(INDICES).first(3)));
    spPrims->AddPrimitive(CSGPrim_Quad::Create(std::span(INDICES).first(4)));
    spPrims->AddPrimitive(CSGPrim_Polygon::Create(INDICES));
    const auto spList = CSGGeomList::Create();
    for (const boost::intrusive_ptr<CSGGeom>& spGeom :
         std::initializer_list<boost::intrusive_ptr<CSGGeom>>{spTriangles, spQuads, spLines, spPrims})
    {
        spList->AddBinding(CSGGeomBinding::Create(spGeom, spBuffer).get());
    }
    pNode->AddData(CSGData_Geometry::Create(spList).get());
    CSGData_GeomBounds::GetOrCreateFromNode(pNode)->GetBox();
}

void AddTransforms(CSGNode* pNode)
{
    const boost::intrusive_ptr<CSGTransform> spTranslate = CSGXFrm_Translate::Create({1, 2, 3});
    const boost::intrusive_ptr<CSGTransform> arrTransforms[] = {
        spTranslate,
        CSGXFrm_Rotate::Create({0, 0, 1}, 0.5f),
        CSGXFrm_Scale::Create({1, 2, 3}),
        CSGXFrm_Transform3::Create(CTransform3()),
        CSGXFrm_LookAt::Create({0, 0, 1}, {0, 0, 0}, {0, 1, 0}),
        CSGXFrm_Pair::Create(spTranslate, CSGXFrm_Scale::Create({1, 1, 2}))};
    const boost::intrusive_ptr<CSGTransform> spList = CSGXFrm_List::Create(arrTransforms);
    spList->SetName("list");
    pNode->AddData(CSGData_LocalTransform::Create(spList).get());
}

std::string MakeSeed()
{
    const auto spRoot = CSGNode::Create("root", "r");
    for (const char* szName : {"a", "b"})
    {
        const auto spChild = CSGNode::Create(szName, szName);
        spRoot->AddChild(spChild.get());
        AddTransforms(spChild.get());
        AddGeometry(spChild.get());
        spChild->SetVisible(false);
    }
    const auto spSet = CSGResourceSet::Create();
    spSet->AddTopLevelNode(spRoot.get());
    spSet->AddTopLevelNode(CSGMem::Construct<CSGAnimation>());
    const CTempFile objFile("seed.nest");
    CSGNestWriter::Create()->SaveResourceSet(objFile.GetName(), spSet.get());
    return objFile.ReadBytes();
}

} // namespace

int main(int argc, char** argv)
{
    const int nCount = argc > 1 ? std::atoi(argv[1]) : 10000;
    const std::string strSeed = MakeSeed();
    const CTempFile objFile("mutation.nest");
    const CTempFile objSaved("saved.nest");
    const int64_t nBlocks = CSGMem::GetPool().GetNumLiveBlocks();
    int nLoaded = 0;
    int nTried = 0;
    CMutator(strSeed).ForEach(nCount, [&](const std::string& rBytes) {
        objFile.WriteBytes(rBytes);
        {
            const auto spReader = CSGNestReader::Create();
            if (spReader->LoadFile(objFile.GetName()))
            {
                ++nLoaded;
                UseScene(spReader->m_spResourceSet.get(), objSaved);
            }
        }
        ++nTried;
        if (CSGMem::GetPool().GetNumLiveBlocks() != nBlocks)
        {
            std::printf("mutation %d leaves objects behind\n", nTried);
            std::exit(1);
        }
    });
    std::printf("fuzz_nest: %d files tried, %d of them loaded (seed of %zu bytes)\n", nTried, nLoaded,
                strSeed.size());
    return 0;
}
