// Finding elements, and that documents do not reach beyond themselves.
#include "daedom/CDaeDatabase_Ids.h"

#include "daedom/CDaeTestDocument.h"
#include "qdsgloader_collada/CDAEErrorHandler.h"
#include "support/CLogCapture.h"

#include <gtest/gtest.h>

TEST(CDaeDatabase_Ids, FindsByIdInDocumentOrder)
{
    CDaeFile objFile;
    ASSERT_TRUE(objFile.OpenMemory(
        "ids.dae",
        DaeTestDocument(
            "<library_nodes><node id=\"a\"><node id=\"b\" name=\"inner node\"/></node><node id=\"b\"/>"
            "<node id=\"e\"><extra id=\"b\"/></node><node id=\"a W\xc3\xbcrfel\"><instance_node url=\"#a "
            "W\xc3\xbcrfel\"/></node></library_nodes>")));
    daeDatabase& rDatabase = *objFile.GetDAE().getDatabase();
    daeDocument* pDocument = objFile.GetDocument();

    ASSERT_EQ(rDatabase.idLookup("b").size(), 2u) << "the first node and the extra";
    daeElement* pInner = rDatabase.idLookup("b", pDocument);
    EXPECT_EQ(pInner->getAttribute("name"), "inner node");
    EXPECT_TRUE(rDatabase.idLookup("c").empty());
    const daeInt nNodeType = pInner->typeID();
    EXPECT_EQ(rDatabase.typeLookup(nNodeType).size(), 5u);

    // a reference has to escape what the id need not
    daeElement* pInstance = pDocument->getDomRoot()->getDescendant("instance_node");
    EXPECT_EQ(reinterpret_cast<daeURI*>(pInstance->getAttributeValue("url"))->getElement().cast(),
              pInstance->getParentElement());

    pInner->setAttribute("id", "c");
    EXPECT_EQ(rDatabase.idLookup("b").size(), 1u);
    EXPECT_EQ(rDatabase.idLookup("c", pDocument), pInner);

    // leaves with all below it
    daeElement* pOuter = rDatabase.idLookup("a", pDocument);
    daeElement::removeFromParent(pOuter);
    EXPECT_TRUE(rDatabase.idLookup("c").empty());
    EXPECT_EQ(rDatabase.typeLookup(nNodeType).size(), 3u);

    // and comes back with it
    daeElementRef spNew = pDocument->getDomRoot()->getDescendant("library_nodes")->add("node");
    spNew->add("node")->setAttribute("id", "late");
    EXPECT_NE(rDatabase.idLookup("late", pDocument), nullptr);
}

TEST(CDaeDatabase_Ids, OtherDocumentsAreNotOpened)
{
    CLogCapture objLog;
    CDAEErrorHandler objErrors;
    CDaeFile objFile;
    ASSERT_TRUE(objFile.OpenMemory(
        "out.dae", DaeTestDocument("<library_nodes><node><instance_node url=\"other.dae#a\"/><instance_node "
                                   "url=\"http://localhost/x.dae#a\"/></node></library_nodes>")));
    for (daeElement* pInstance : objFile.GetDAE().getDatabase()->typeLookup(
             objFile.GetDocument()->getDomRoot()->getDescendant("instance_node")->typeID()))
    {
        EXPECT_EQ(reinterpret_cast<daeURI*>(pInstance->getAttributeValue("url"))->getElement().cast(),
                  nullptr);
    }
    EXPECT_TRUE(objLog.Contains("Not opening http://localhost/x.dae"));
    EXPECT_EQ(objFile.GetDAE().getDocCount(), 1);
}

TEST(CDaeDatabase_Ids, ManyDocumentsOneAfterTheOther)
{
    for (int n = 0; n < 50; ++n)
    {
        CDaeFile objFile;
        ASSERT_TRUE(
            objFile.OpenMemory("n.dae", DaeTestDocument("<library_nodes><node id=\"x\"/></library_nodes>")));
        EXPECT_EQ(objFile.GetDAE().getDatabase()->idLookup("x").size(), 1u);
    }
}
