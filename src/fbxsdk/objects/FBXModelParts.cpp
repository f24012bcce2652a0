// Takes models of older files apart.
#include "fbxsdk/objects/FBXModelParts.h"

#include "fbxsdk/objects/FBXObjectName.h"

#include <algorithm>
#include <utility>

namespace
{

bool IsGeometry(const CFBXRecord& rModel)
{
    // Meshes and lines have vertices, splines and patches points.
    return rModel.FindChild("Vertices") != nullptr || rModel.FindChild("Points") != nullptr;
}

// Writers that know of the difference mark an attribute's properties by 'N'. What others write of a camera or
// a light may be of both.
void SplitProperties(CFBXProperties& rModel, CFBXProperties& rAttribute, bool bBoth)
{
    const auto IsOfAttribute = [](const CFBXProperty& rProperty) {
        return rProperty.strFlags.find('N') != std::string_view::npos && !rProperty.IsUserDefined();
    };
    if (std::ranges::none_of(rModel, IsOfAttribute))
    {
        if (bBoth)
        {
            rAttribute = rModel;
        }
        return;
    }
    const CFBXProperties objAll = std::exchange(rModel, {});
    for (const CFBXProperty& rProperty : objAll)
    {
        (IsOfAttribute(rProperty) ? rAttribute : rModel).Add(rProperty);
    }
}

} // namespace

FBXShapeChannels AddFBXShapes(const CFBXObject& rGeometry, CFBXObjectTable& rTable)
{
    FBXShapeChannels mapChannels;
    const CFBXObject* pBlendShape = nullptr;
    for (const CFBXRecord& rShape : rGeometry.pRecord->GetChildren())
    {
        if (rShape.GetName() != "Shape")
        {
            continue;
        }
        CFBXObject objPart;
        objPart.strName = rShape.GetString(0);
        objPart.strClass = "Deformer";
        if (pBlendShape == nullptr)
        {
            objPart.strKind = "BlendShape";
            pBlendShape = &rTable.AddUnnumberedObject(objPart);
            rTable.AddConnection({pBlendShape->nId, rGeometry.nId});
        }
        objPart.strKind = "BlendShapeChannel";
        const CFBXObject& rChannel = rTable.AddUnnumberedObject(objPart);
        rTable.AddConnection({rChannel.nId, pBlendShape->nId});
        mapChannels.emplace(rChannel.strName, &rChannel);

        objPart.strClass = "Geometry";
        objPart.strKind = "Shape";
        objPart.pRecord = &rShape;
        rTable.AddConnection({rTable.AddUnnumberedObject(objPart).nId, rChannel.nId});
    }
    return mapChannels;
}

SFBXModelParts SplitFBXModel(CFBXObject& rModel, CFBXObjectTable& rTable)
{
    SFBXModelParts objParts;
    const bool bGeometry = IsGeometry(*rModel.pRecord);
    // The geometry of a model that has a kind for it and no points is an object of its own in the file.
    if (!bGeometry && (rModel.strKind.empty() || rModel.strKind == "Mesh" ||
                       rModel.strKind.find("Nurbs") != std::string_view::npos))
    {
        return objParts;
    }
    CFBXObject objAttribute;
    objAttribute.strClass = bGeometry ? "Geometry" : "NodeAttribute";
    objAttribute.strKind = rModel.strKind;
    if (rModel.pRecord->FindChild("PolygonVertexIndex") != nullptr)
    {
        objAttribute.strKind = "Mesh";
    }
    objAttribute.pRecord = rModel.pRecord;
    const std::string_view strFullName = rModel.pRecord->GetChildString("NodeAttributeName");
    objAttribute.strName =
        CutFBXClash(CutFBXClass(strFullName, objAttribute.strClass, rTable.GetDocument().IsASCII()));

    CFBXObject& rAttribute = rTable.AddUnnumberedObject(objAttribute);
    objParts.pAttribute = &rAttribute;
    SplitProperties(rModel.objProperties, rAttribute.objProperties, !bGeometry);
    rTable.AddConnection({rAttribute.nId, rModel.nId});
    if (!strFullName.empty())
    {
        // Connections to it by this name are rare; not to be found by it is no loss.
        rTable.AddName(strFullName, rAttribute);
    }
    if (bGeometry)
    {
        objParts.mapShapeChannels = AddFBXShapes(rAttribute, rTable);
    }
    return objParts;
}
