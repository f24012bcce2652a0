// Version 6 and before, in the shape of version 7.
#include "FBXTestTable.h"

#include <gtest/gtest.h>

TEST(FBXObjects6, ModelsComeApart)
{
    const auto spTable = MakeTable(6100, R"(
Objects:  {
 Model: "Model::Box", "Mesh" {
  Vertices: 0,0,0,1,0,0,0,1,0
  PolygonVertexIndex: 0,1,-3
  Shape: "wide" { }
 }
 Model: "Model::Cam", "Camera" {
  Properties60: {
   Property: "Lcl Scaling", "Lcl Scaling", "A+",2,2,2
   Property: "FocalLength", "Number", "A+N",35
   Property: "notes", "KString", "UN", "mine"
  }
  NodeAttributeName: "NodeAttribute::Lens_ncl1_1"
 }
 Model: "Model::Producer Top", "Camera" { }
 Model: "Model::Box_ncl1_1", "LimbNode" { }
 Deformer: "Deformer::Skin Box", "Skin" { }
 Deformer: "SubDeformer::Cluster Box", "Cluster" { }
 Pose: "Pose::bind", "BindPose" { PoseNode: { Node: "Model::Box_ncl1_1" } }
 GlobalSettings:  { Properties60: { Property: "UpAxis", "int", "",2 } }
}
Connections:  {
 Connect: "OO", "Model::Box", "Model::Scene" Connect: "OO", "Model::Cam", "Model::Box"
 Connect: "OO", "Model::Nobody", "Model::Box" Connect: "OO", "Deformer::Skin Box", "Model::Box"
 Connect: "OO", "SubDeformer::Cluster Box", "Deformer::Skin Box"
 Connect: "OO", "Model::Box_ncl1_1", "SubDeformer::Cluster Box"
 Connect: "PP", "NodeAttribute::Lens_ncl1_1", "FilmWidth", "Model::Box", "width"
}
Version5:  { Settings: { FrameRate: "25" TimeLineStopTime: 46186158000 } }
)");
    ASSERT_NE(spTable, nullptr);
    EXPECT_EQ(
        Describe(*spTable),
        (Lines{"Model Mesh Box -> root", "Geometry Mesh  -> Model Mesh Box",
               "Deformer BlendShape wide -> Geometry Mesh ",
               "Deformer BlendShapeChannel wide -> Deformer BlendShape wide",
               "Geometry Shape wide -> Deformer BlendShapeChannel wide", "Model Camera Cam -> Model Mesh Box",
               "NodeAttribute Camera Lens -> Model Camera Cam -> Model Mesh Box width",
               "Model LimbNode Box -> Deformer Cluster Cluster Box",
               "NodeAttribute LimbNode  -> Model LimbNode Box", "Deformer Skin Skin Box -> Geometry Mesh ",
               "Deformer Cluster Cluster Box -> Deformer Skin Skin Box", "Pose BindPose bind"}));
    const auto& rObjects = spTable->GetObjects();
    EXPECT_EQ(rObjects[1].pRecord, rObjects[0].pRecord);
    EXPECT_EQ(rObjects[5].objProperties.Find("FocalLength"), nullptr);
    EXPECT_EQ(rObjects[5].objProperties.GetString("notes"), "mine");
    EXPECT_EQ(rObjects[6].objProperties.GetDouble("FocalLength"), 35);
    EXPECT_EQ(rObjects[6].objProperties.Find("Lcl Scaling"), nullptr);
    const CFBXValue& rNode = rObjects.back().pRecord->FindChild("PoseNode")->FindChild("Node")->GetValue(0);
    EXPECT_EQ(spTable->FindObject(rNode), &rObjects[7]);

    const CFBXProperties& rSettings = spTable->GetGlobalSettings().objProperties;
    EXPECT_EQ(rSettings.GetInt64("UpAxis"), 2);
    EXPECT_EQ(rSettings.GetInt64("TimeMode"), 14);
    EXPECT_EQ(rSettings.GetDouble("CustomFrameRate"), 25);
    EXPECT_EQ(rSettings.GetInt64("TimeSpanStop"), 46186158000);
}

TEST(FBXObjects6, TexturesOfPolygonsGoToMaterials)
{
    const std::string strLayers = R"(
  PolygonVertexIndex: 0,1,-3,0,1,-3
  LayerElementMaterial: 0 { MappingInformationType: "ByPolygon" Materials: 0,1 }
  LayerElementTexture: 0 { MappingInformationType: "ByPolygon" TextureId: -1,1 }
  LayerElementEmissive_Textures: 0 { MappingInformationType: "AllSame" TextureId: 0 }
  LayerElementBumpTextures: 0 { MappingInformationType: "NoMappingInformation" TextureId: 0 }
  LayerElementSpecularTextures: 0 { MappingInformationType: "AllSame" TextureId: 7 }
 })";
    const auto spTable = MakeTable(6100, R"(
Objects:  {
 Model: "Model::A", "Mesh" { Vertices: 0,0,0)" +
                                             strLayers + R"(
 Model: "Model::B", "Mesh" { Vertices: 0,0,0 PolygonVertexIndex: 0,0,-1 }
 Model: "Model::C", "Mesh" { Vertices: 0,0,0 PolygonVertexIndex: 0,0,-1 }
 Material: "Material::oak", "" { }
 Material: "Material::ash", "" { }
 Texture: "Texture::t0", "" { }
 Texture: "Texture::t1", "" { }
}
Connections:  {
 Connect: "OO", "Material::oak", "Model::C" Connect: "OO", "Material::oak", "Model::A"
 Connect: "OO", "Material::ash", "Model::A" Connect: "OO", "Texture::t0", "Model::A"
 Connect: "OO", "Texture::t1", "Model::A" Connect: "OO", "Material::ash", "Model::B"
 Connect: "OO", "Texture::t0", "Model::B"
}
)");
    ASSERT_NE(spTable, nullptr);
    const Lines vecLines = Describe(*spTable);
    EXPECT_EQ(Lines(vecLines.begin() + 6, vecLines.end()),
              (Lines{"Material  oak -> Model Mesh A", "Material  ash -> Model Mesh A",
                     "Texture  t0 -> Material  oak EmissiveColor -> Material  ash EmissiveColor -> "
                     "Material  ash_2 DiffuseColor",
                     "Texture  t1 -> Material  ash DiffuseColor", "Material  ash_2 -> Model Mesh B",
                     "Material  oak_2 -> Model Mesh C"}));
}

TEST(FBXObjects6, TakesBecomeStacks)
{
    const auto spTable = MakeTable(6100, R"(
Objects:  {
 Model: "Model::Cam", "Camera" { Properties60: {
  Property: "Lcl Rotation", "Lcl Rotation", "A+",1,2,3
  Property: "Lcl Scaling", "Lcl Scaling", "A+",1,1,1
  Property: "Visibility", "Visibility", "A+",1
  Property: "FocalLength", "Number", "A+N",35
 } }
 Model: "Model::Face", "Mesh" { Vertices: 0,0,0 PolygonVertexIndex: 0,0,-1 Shape: "smile" { } }
}
Connections:  { Connect: "OO", "Model::Cam", "Model::Scene" Connect: "OO", "Model::Face", "Model::Scene" }
Takes:  {
 Current: "walk"
 Take: "walk" {
  LocalTime: 10,20
  ReferenceTime: 0,30
  Model: "Model::Cam" {
   Channel: "Transform" {
    Channel: "T" {
     Channel: "X" { Default: 4 KeyVer: 4005 KeyCount: 1 Key: 0,1,L }
     Channel: "Y" { Default: 5 }
    }
    Channel: "R" { Channel: "X" { Default: 1 } Channel: "Y" { Default: 2.5 } Channel: "Z" { Default: 3 } }
    Channel: "S" { Channel: "X" { Default: 1 } Channel: "Y" { Default: 1 } Channel: "Z" { Default: 1.000001 } }
   }
   Channel: "Visibility" { Default: 1 Key: 0,1,C,s }
   Channel: "FocalLength" { Default: 35 Key: 0,1,L }
  }
  Model: "Model::Face" { Channel: "smile" { Default: 0 Key: 0,1,L } }
  Model: "Model::Nobody" { Channel: "Visibility" { Default: 1 Key: 0,1,C,s } }
 }
}
)");
    ASSERT_NE(spTable, nullptr);
    const Lines vecLines = Describe(*spTable);
    EXPECT_EQ(
        Lines(vecLines.begin() + 7, vecLines.end()),
        (Lines{"AnimationLayer  BaseLayer -> AnimationStack  walk", "AnimationStack  walk",
               "AnimationCurveNode  T -> AnimationLayer  BaseLayer -> Model Camera Cam Lcl Translation",
               "AnimationCurve   -> AnimationCurveNode  T d|X",
               "AnimationCurveNode  R -> AnimationLayer  BaseLayer -> Model Camera Cam Lcl Rotation",
               "AnimationCurveNode  Visibility -> AnimationLayer  BaseLayer -> Model Camera Cam Visibility",
               "AnimationCurve   -> AnimationCurveNode  Visibility d|Visibility",
               "AnimationCurveNode  FocalLength -> AnimationLayer  BaseLayer -> "
               "NodeAttribute Camera  FocalLength",
               "AnimationCurve   -> AnimationCurveNode  FocalLength d|FocalLength",
               "AnimationCurveNode  DeformPercent -> AnimationLayer  BaseLayer -> "
               "Deformer BlendShapeChannel smile DeformPercent",
               "AnimationCurve   -> AnimationCurveNode  DeformPercent d|DeformPercent"}));
    EXPECT_EQ(spTable->GetActiveStackName(), "walk");
    const auto& rObjects = spTable->GetObjects();
    EXPECT_EQ(rObjects[8].objProperties.GetInt64("LocalStart"), 10);
    EXPECT_EQ(rObjects[8].objProperties.GetInt64("ReferenceStop"), 30);
    EXPECT_EQ(rObjects[9].objProperties.GetDouble("d|Y"), 5);
    EXPECT_EQ(rObjects[10].pRecord->GetChildInt64("KeyVer"), 4005);
    EXPECT_EQ(rObjects[11].objProperties.GetDouble("d|Y"), 2.5);
}

TEST(FBXObjects5, EverythingIsInsideOfModels)
{
    const auto spTable = MakeTable(5800, R"(
Media:  { Video: { Video: "wood" { Filename: "wood.png" } } }
Model: "Model::Lamp" {
 Limits:  { RAuto: 0 RXAxis: -90 }
 Type: "Light"
 TypeFlags: "Light"
 Color: 1,0.5,0
 ConeAngle: 45
 Children: "Model::Box", "Model::Lamp", "Model::Nobody"
}
Model: "Model::Box" {
 Material: "Material::oak" { Diffuse: 1,2,3 Alpha: 0.25 }
 Texture: "Texture::grain" { Media: "wood" }
 Vertices: 0,0,0
 PolygonVertexIndex: 0,0,-1
 Link: "Model::Lamp" { Indexes: 0 Weights: 1 }
 Channel: "Transform" { Channel: "R" { Channel: "X" { Default: -90 } } }
 Children: "Model::Lamp"
}
Model: "Model::Eye" {
 Type: "Camera"
 TypeFlags: "Camera"
 CameraAperture: 1.5,1
 Type: 1
 Material: "Material::oak" { Diffuse: 1,2,3 }
}
Takes:  {
 Take: "t" {
  Model: "Model::Eye" {
   Channel: "Transform" {
    Channel: "S" { Channel: "Y" { Default: 2 } }
    Channel: "T" { Channel: "Z" { Default: 3 Key: 0,1,L } }
   }
   Channel: "Visibility" { Default: 100 }
  }
 }
}
)");
    ASSERT_NE(spTable, nullptr);
    EXPECT_EQ(
        Describe(*spTable),
        (Lines{"Video Clip wood -> Texture  grain", "Model Light Lamp -> Deformer Cluster  -> Model Mesh Box",
               "Model Mesh Box -> Model Light Lamp", "Model Camera Eye -> root",
               "NodeAttribute Light  -> Model Light Lamp", "Geometry Mesh  -> Model Mesh Box",
               "Material  oak -> Model Mesh Box -> Model Camera Eye",
               "Texture  grain -> Material  oak DiffuseColor", "Deformer Skin  -> Geometry Mesh ",
               "Deformer Cluster  -> Deformer Skin ", "NodeAttribute Camera  -> Model Camera Eye",
               "AnimationLayer  BaseLayer -> AnimationStack  t", "AnimationStack  t",
               "AnimationCurveNode  T -> AnimationLayer  BaseLayer -> Model Camera Eye Lcl Translation",
               "AnimationCurve   -> AnimationCurveNode  T d|Z"}));
    const struct
    {
        size_t uiObject;
        std::string_view strProperty;
        std::vector<double> vecNumbers;
    } PROPERTIES[] = {
        {1, "PostRotation", {-90, 0, 0}},
        {1, "RotationActive", {1}},
        {2, "Lcl Rotation", {-90, 0, 0}},
        {2, "PostRotation", {}},
        {3, "Lcl Scaling", {1, 2, 1}},
        {3, "Lcl Translation", {0, 0, 3}},
        {3, "Visibility", {1}},
        {4, "Color", {1, 0.5, 0}},
        {4, "Cone angle", {45}},
        {6, "DiffuseColor", {1, 2, 3}},
        {6, "TransparencyFactor", {0.75}},
        {10, "FilmWidth", {1.5}},
        {10, "FilmHeight", {1}},
        {10, "CameraProjectionType", {1}},
    };
    for (const auto& rProperty : PROPERTIES)
    {
        EXPECT_EQ(GetNumbers(spTable->GetObjects()[rProperty.uiObject].objProperties, rProperty.strProperty),
                  rProperty.vecNumbers)
            << rProperty.uiObject << " " << rProperty.strProperty;
    }
}
