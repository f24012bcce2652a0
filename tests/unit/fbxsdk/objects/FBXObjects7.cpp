// Version 7: ids, properties and their templates, connections.
#include "FBXTestTable.h"

#include "support/CLogCapture.h"

#include <gtest/gtest.h>

TEST(FBXObjects7, PropertiesAreTheObjectsOwnThenThoseOfItsTemplate)
{
    const auto spTable = MakeTable(7400, R"(
Definitions:  {
 ObjectType: "Model" { PropertyTemplate: "FbxNode" { Properties70: {
  P: "Show", "bool", "", "",1
  P: "Lcl Scaling", "Lcl Scaling", "", "A",1,1,1
 } } }
 ObjectType: "NodeAttribute" { PropertyTemplate: "KFbxCamera" { Properties70: {
  P: "FocalLength", "Number", "", "A",34
 } } }
}
Objects:  {
 Model: -7, "Model::rig::Box", "Mesh" { Properties70: {
  P: "Lcl Scaling", "Lcl Scaling", "", "A+",2,3,4
  P: "notes", "KString", "", "AU", "tall"
 } }
 NodeAttribute: 2, "NodeAttribute::", "Camera" { }
 NodeAttribute: 3, "NodeAttribute::", "Light" { }
}
GlobalSettings:  { Properties70: { P: "UpAxis", "int", "Integer", "",2 } }
Documents: { Document: 9, "", "Scene" { Properties70: { P: "ActiveAnimStackName", "KString", "", "", "walk" } } }
Takes: { Current: "run" }
)");
    ASSERT_NE(spTable, nullptr);
    const CFBXObject* pBox = spTable->FindObject(-7);
    ASSERT_NE(pBox, nullptr);
    EXPECT_EQ(pBox->strName, "rig::Box");
    EXPECT_EQ(GetNumbers(pBox->objProperties, "Lcl Scaling"), (std::vector<double>{2, 3, 4}));
    EXPECT_EQ(pBox->objProperties.GetInt64("Show"), 1);
    EXPECT_EQ(pBox->objProperties.GetDouble("missing", 5), 5);
    ASSERT_EQ(pBox->objProperties.size(), 2u);
    EXPECT_FALSE(pBox->objProperties.begin()->IsUserDefined());
    const CFBXProperty& rNotes = *(pBox->objProperties.begin() + 1);
    EXPECT_TRUE(rNotes.IsUserDefined() && rNotes.IsAnimatable());
    EXPECT_EQ(rNotes.GetString(0), "tall");

    EXPECT_EQ(spTable->FindObject(2)->objProperties.GetDouble("FocalLength"), 34);
    EXPECT_EQ(spTable->FindObject(3)->objProperties.Find("FocalLength"), nullptr);
    EXPECT_EQ(spTable->GetGlobalSettings().objProperties.GetInt64("UpAxis"), 2);
    EXPECT_EQ(spTable->GetActiveStackName(), "walk");
}

TEST(FBXObjects7, ConnectionsKeepTheirOrderAndLoseWhatIsUnknown)
{
    CLogCapture objLog;
    const auto spTable = MakeTable(7400, R"(
Objects:  {
 Model: 1, "Model::a", "Null" { } Model: 2, "Model::b", "Null" { } Model: 3, "Model::c", "Null" { }
 Model: 3, "Model::again", "Null" { }
 Model: 0, "Model::zero", "Null" { }
 Model: "Model::unnumbered", "Null" { }
}
Connections:  {
 C: "OO",3,1 C: "OO",2,1 C: "OO",1,1 C: "OO",1,0 C: "OO",9,1 C: "OO",1,9 C: "XX",2,1
 C: "PP",2,"from",3,"to"
 C: "PO",2,"from",1
 C: "OP",3,2,"to" C: "OO"
}
)");
    ASSERT_NE(spTable, nullptr);
    EXPECT_EQ(Describe(*spTable), (Lines{"Model Null a -> root",
                                         "Model Null b -> Model Null a -> Model Null c to -> Model Null a",
                                         "Model Null c -> Model Null a -> Model Null b to"}));
    std::string strSources;
    for (const CFBXConnection& rConnection : spTable->GetSources(1))
    {
        strSources += std::to_string(rConnection.nSource) + std::string(rConnection.strSourceProperty) + " ";
    }
    EXPECT_EQ(strSources, "3 2 2from ");
    EXPECT_TRUE(spTable->GetSources(77).empty());
    EXPECT_TRUE(objLog.HasLine("4 Ignoring the Model 'again': its id 3 is that of another object."));
    EXPECT_TRUE(objLog.HasLine("4 Ignoring the Model 'zero': its id 0 is that of another object."));
    EXPECT_TRUE(objLog.Contains("4 Ignoring the object 'Model' at line"));
    EXPECT_TRUE(objLog.HasLine("7 Ignoring 4 connections of objects that the file does not have."));
}

TEST(FBXObjects7, ManyPropertiesAreFoundAsFewAre)
{
    CValues vecValues;
    for (int n = 0; n < 300; ++n)
    {
        vecValues.push_back("p" + std::to_string(n % 200) + " " + std::to_string(n));
    }
    const auto spTable =
        MakeTable(7400, "Objects:  {\n" + Object("Model", 1, "a", "Null", Properties(vecValues)) + "}\n");
    ASSERT_NE(spTable, nullptr);
    const CFBXProperties& rProperties = spTable->FindObject(1)->objProperties;
    EXPECT_EQ(rProperties.size(), 300u);
    EXPECT_EQ(rProperties.GetInt64("p0", -1), 0);
    EXPECT_EQ(rProperties.GetInt64("p130", -1), 130);
    EXPECT_EQ(rProperties.GetInt64("p199", -1), 199);
    EXPECT_EQ(rProperties.Find("p200"), nullptr);
}

TEST(FBXObjects7, ShapesInsideOfGeometryBecomeObjects)
{
    const auto spTable = MakeTable(7100, R"(
Objects:  {
 Geometry: 5, "Geometry::", "Mesh" { Shape: "wide" { } Shape: "tall" { } }
 Model: 1, "Model::a", "Mesh" { }
}
Connections:  { C: "OO",5,1 }
)");
    ASSERT_NE(spTable, nullptr);
    EXPECT_EQ(Describe(*spTable), (Lines{"Geometry Mesh  -> Model Mesh a", "Model Mesh a",
                                         "Deformer BlendShape wide -> Geometry Mesh ",
                                         "Deformer BlendShapeChannel wide -> Deformer BlendShape wide",
                                         "Geometry Shape wide -> Deformer BlendShapeChannel wide",
                                         "Deformer BlendShapeChannel tall -> Deformer BlendShape wide",
                                         "Geometry Shape tall -> Deformer BlendShapeChannel tall"}));
}

TEST(FBXObjects7, FilesWithoutObjects)
{
    for (const int nVersion : {5800, 7400})
    {
        CQDString strError;
        EXPECT_EQ(ReadFBXTable(FBXHeader(nVersion) + "Connections:  {\n}\nMedia:  {\n}\n", strError),
                  nullptr);
        EXPECT_EQ(strError, "The file has no objects.");
    }
}
