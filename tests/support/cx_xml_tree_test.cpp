#include "support/temporary_folder.h"
#include "support/xml_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <memory>

namespace {

/// Counts the objects that are alive.
struct Counted : CxXmlElement {
    Counted(const char *name, int &count) : CxXmlElement(name), m_count(count) { ++m_count; }
    ~Counted() override { --m_count; }
    int &m_count;
};

} // namespace

TEST(CxXmlTreeTest, HasOneObjectForEachNodeAndAttribute) {
    CxXmlDocument document;
    document.Parse("<a x='1' y='2' z='3'><b/>t<!--c--><b/></a>");
    CxXmlElement *const root = document.RootElement();
    const CxXmlDocument &constant = document;
    EXPECT_EQ(constant.RootElement(), root);
    EXPECT_EQ(root->Parent(), &document);
    EXPECT_EQ(root->LastChild()->GetDocument(), &document);
    EXPECT_EQ(root->FirstChild("b"), root->FirstChildElement());
    EXPECT_EQ(root->LastChild("b"), root->FirstChildElement("b")->NextSiblingElement("b"));
    EXPECT_EQ(root->LastChild()->PreviousSibling()->ToComment()->NextSibling("b"),
              root->LastChild());
    EXPECT_EQ(root->LastChild()->PreviousSibling("t")->Type(), 4);
    EXPECT_EQ(root->FirstChild("t")->ToText()->PreviousSibling(), root->FirstChild());
    EXPECT_EQ(root->IterateChildren("b", root->FirstChild()), root->LastChild());
    EXPECT_EQ(root->IterateChildren(root->LastChild()), nullptr);
    EXPECT_EQ(root->FirstChild(nullptr), nullptr);

    CxXmlAttribute *const first = root->FirstAttribute();
    EXPECT_EQ(first->Next()->Next(), root->LastAttribute());
    EXPECT_EQ(root->LastAttribute()->Previous()->Previous(), first);
    EXPECT_EQ(first->Previous(), nullptr);
    int mine = 0;
    first->SetUserData(&mine);
    root->SetUserData(&mine);
    root->RemoveAttribute("y");
    EXPECT_EQ(first->Next()->IntValue(), 3);
    EXPECT_EQ(root->FirstAttribute()->GetUserData(), &mine);
    EXPECT_EQ(document.FirstChild()->GetUserData(), &mine);
    EXPECT_EQ(document.GetUserData(), nullptr);
    // An attribute without name and value ends TinyXML's rows; its objects go all the same.
    CxXmlAttribute *const last = root->LastAttribute();
    last->SetName("");
    last->SetValue("");
    EXPECT_EQ(first->Next(), nullptr);
    root->RemoveAttribute("x");
    EXPECT_EQ(root->FirstAttribute(), last);
}

TEST(CxXmlTreeTest, HandlesAreEmptyWhereNothingIs) {
    CxXmlDocument document;
    document.Parse("<a><b/>t<!D><b><c/></b></a>");
    CxXmlHandle handle(&document);
    const CxXmlHandle root = handle.FirstChild("a");
    EXPECT_STREQ(root.Child("b", 1).FirstChild().Element()->Value(), "c");
    EXPECT_STREQ(root.ChildElement(1).FirstChildElement("c").Node()->Value(), "c");
    EXPECT_STREQ(root.Child(1).Text()->Value(), "t");
    EXPECT_STREQ(root.Child(2).Unknown()->Value(), "!D");
    EXPECT_EQ(root.ChildElement("b", 1).Node(), root.Element()->LastChild());
    EXPECT_EQ(root.Child(4).FirstChild().ChildElement(0).Child("x", 2).Node(), nullptr);
    EXPECT_EQ(root.FirstChildElement().Text(), nullptr);
}

TEST(CxXmlTreeTest, ReadsAndSetsAttributes) {
    CxXmlElement element("a");
    element.SetAttribute("t", "12px");
    element.SetAttribute("i", -7);
    element.SetDoubleAttribute("d", 1e7 / 3);
    element.SetAttribute("n", "none");
    EXPECT_EQ(Streamed(element), "<a t=\"12px\" i=\"-7\" d=\"3333333.333333\" n=\"none\" />");
    int number = 5;
    double real = 5;
    EXPECT_STREQ(element.Attribute("t", &number), "12px");
    EXPECT_EQ(number, 12);
    EXPECT_STREQ(element.Attribute("d", &real), "3333333.333333");
    EXPECT_EQ(real, 3333333.333333);
    EXPECT_EQ(element.QueryIntAttribute("n", &number), CXXML_WRONG_TYPE);
    EXPECT_EQ(element.QueryDoubleAttribute("none", &real), CXXML_NO_ATTRIBUTE);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(real, 3333333.333333);
    EXPECT_EQ(element.QueryIntAttribute("i", &number), CXXML_SUCCESS);
    EXPECT_EQ(number, -7);
    // A missing attribute sets the number to 0.
    EXPECT_EQ(element.Attribute("none", &number), nullptr);
    EXPECT_EQ(element.Attribute("none", &real), nullptr);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(real, 0);
    const int most = std::numeric_limits<int>::max();
    CxXmlAttribute *const attribute = element.FirstAttribute();
    attribute->SetValue(" +3000000000");
    EXPECT_EQ(CxXmlText(attribute->Value()).ToInt(), most);
    EXPECT_EQ(attribute->IntValue(), most);
    EXPECT_EQ(attribute->QueryIntValue(&number), CXXML_SUCCESS);
    EXPECT_EQ(number, most);
    EXPECT_TRUE(element.Attribute("t", &number) && number == most);
    EXPECT_EQ(element.QueryIntAttribute("t", &number), CXXML_SUCCESS);
    EXPECT_EQ(number, most);
    element.FirstAttribute()->SetDoubleValue(-std::numeric_limits<double>::max());
    EXPECT_EQ(element.FirstAttribute()->DoubleValue(), -std::numeric_limits<double>::max());
    EXPECT_EQ(std::string(element.Attribute("t")).size(), 317U);
    element.SetAttribute(nullptr, nullptr);
    EXPECT_STREQ(element.Attribute(""), "");

    CxXmlAttribute x("x", "1.5e1");
    EXPECT_EQ(x.IntValue(), 1);
    EXPECT_EQ(x.QueryDoubleValue(&real), CXXML_SUCCESS);
    EXPECT_EQ(real, 15);
    EXPECT_EQ(x.Next(), nullptr);
    auto y = std::make_unique<CxXmlAttribute>("y", "");
    CxXmlAttribute sameName("x", "");
    EXPECT_TRUE(x == sameName && x<*y && * y> x);
    CxXmlAttributeSet set;
    for (CxXmlAttribute *each : {&x, y.get(), &sameName, &x, element.FirstAttribute()})
        set.Add(each);
    EXPECT_EQ(set.First(), &x);
    EXPECT_EQ(set.Last(), y.get());
    EXPECT_EQ(set.Find("y")->Previous(), &x);
    set.Remove(&sameName);
    y.reset();
    EXPECT_EQ(set.Last(), &x);
    EXPECT_EQ(x.Next(), nullptr);
}

TEST(CxXmlTreeTest, OwnsWhatIsLinkedAndCopiesWhatIsInserted) {
    int alive = 0;
    {
        CxXmlDocument document;
        auto *const root = new Counted("r", alive);
        int mine = 0;
        root->SetUserData(&mine);
        EXPECT_EQ(document.LinkEndChild(root), root);
        CxXmlNode *const b = root->LinkEndChild(new Counted("b", alive));
        CxXmlNode *const a = root->InsertBeforeChild(b, CxXmlText("a"));
        CxXmlNode *const c = root->InsertAfterChild(b, CxXmlComment("c"));
        EXPECT_EQ(Streamed(document), "<r>a<b /><!--c--></r>");
        EXPECT_EQ(a->NextSibling(), b);
        EXPECT_EQ(root->ReplaceChild(a, *root)->Parent(), root);
        EXPECT_EQ(Streamed(document), "<r><r>a<b /><!--c--></r><b /><!--c--></r>");
        EXPECT_EQ(root->FirstChild()->GetUserData(), &mine);
        EXPECT_EQ(alive, 2);

        // What is refused changes nothing.
        const CxXmlDocument other;
        CxXmlText stranger("s");
        EXPECT_EQ(root->LinkEndChild(nullptr), nullptr);
        EXPECT_EQ(root->LinkEndChild(root), nullptr);
        EXPECT_EQ(root->LinkEndChild(b), nullptr);
        EXPECT_EQ(root->InsertBeforeChild(&stranger, *b), nullptr);
        EXPECT_EQ(root->InsertAfterChild(nullptr, *b), nullptr);
        EXPECT_EQ(root->ReplaceChild(root, *b), nullptr);
        EXPECT_FALSE(root->RemoveChild(&stranger));
        EXPECT_FALSE(document.RemoveChild(c));
        EXPECT_FALSE(document.Error());
        EXPECT_EQ(root->InsertEndChild(other), nullptr);
        EXPECT_EQ(document.ErrorId(), 15);
        EXPECT_EQ(root->LinkEndChild(new CxXmlDocument), nullptr);
        auto *const above = new CxXmlElement("above");
        CxXmlNode *const below = above->LinkEndChild(new CxXmlElement("below"));
        EXPECT_EQ(below->LinkEndChild(above), nullptr);
        delete above;

        EXPECT_TRUE(root->RemoveChild(b));
        EXPECT_EQ(alive, 1);
        delete root->FirstChild();
        EXPECT_EQ(Streamed(document), "<r><!--c--></r>");
        root->Clear();
        EXPECT_TRUE(root->NoChildren());
    }
    EXPECT_EQ(alive, 0);
}

TEST(CxXmlTreeTest, CopiesEachKindOfNode) {
    const char *const text = "<?xml version=\"1.0\" ?><a x=\"1\"><b>t</b><!--c--><!D d></a>";
    CxXmlDocument document;
    document.SetTabSize(7);
    document.Parse(text);
    document.RootElement()->FirstChild()->SetUserData(&document);
    document.InsertEndChild(document);
    const CxXmlDocument copy(document);
    EXPECT_EQ(Streamed(copy), text);
    EXPECT_EQ(copy.ErrorId(), 15);
    EXPECT_EQ(copy.TabSize(), 7);
    EXPECT_EQ(copy.RootElement()->FirstChild()->GetUserData(), &document);
    EXPECT_EQ(copy.RootElement()->Column(), 23);

    CxXmlElement element("e");
    element.SetAttribute("y", 2);
    element.FirstAttribute()->SetUserData(&element);
    element = *copy.RootElement();
    EXPECT_EQ(Streamed(element), "<a x=\"1\"><b>t</b><!--c--><!D d></a>");
    element = *element.FirstChildElement();
    EXPECT_EQ(Streamed(element), "<b>t</b>");
    const CxXmlElement &self = element;
    element = self;
    EXPECT_EQ(Streamed(element), "<b>t</b>");
    CxXmlDeclaration declaration;
    declaration = CxXmlDeclaration("1", "2", nullptr);
    EXPECT_EQ(Streamed(declaration), "<?xml version=\"1\" encoding=\"2\" ?>");
    EXPECT_EQ(declaration.Type(), 5);
    CxXmlUnknown unknown;
    unknown.SetValue("!D");
    EXPECT_EQ(Streamed(CxXmlUnknown(unknown)), "<!D>");
    CxXmlText value("12ab");
    EXPECT_EQ(value.ToInt(), 12);
    EXPECT_EQ(value.ToStdString(), "12ab");
    value = CxXmlText("-2.5e1 x");
    EXPECT_EQ(value.ToDouble(), -25);
    value.SetValue(nullptr);
    EXPECT_EQ(value.ToDouble(), 0);
    EXPECT_EQ(value.ToString(), "");
}

TEST(CxXmlTreeTest, TreesOfAnyDepthAreCopiedWrittenAndDeleted) {
    constexpr int depth = 100000;
    auto root = std::make_unique<CxXmlElement>("a");
    CxXmlNode *node = root.get();
    for (int i = 1; i < depth; ++i)
        node = node->LinkEndChild(new CxXmlElement("a"));
    CxXmlElement assigned("b");
    assigned = *root;
    const std::unique_ptr<CxXmlNode> clone(assigned.Clone());
    root.reset();
    EXPECT_EQ(Streamed(*clone).size(), depth * 7U - 2);
}

TEST(CxXmlTreeTest, NumbersHaveAPointInEveryLocale) {
    // The numbers of a locale as the C library keeps them: "," and ".", groups of three.
    const char numeric[] = "\x14\x11\3\x20\6\0\0\0\x20\0\0\0\x22\0\0\0\x24\0\0\0\x28\0\0\0"
                           "\x2C\0\0\0\x30\0\0\0,\0.\0\3\3\0\0,\0\0\0.\0\0\0UTF-8";
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "comma");
    folder.Make("comma/LC_NUMERIC", std::string(numeric, sizeof numeric));
    setenv("LOCPATH", folder.Path().c_str(), 1);
    const char *const isSet = setlocale(LC_NUMERIC, "comma");
    unsetenv("LOCPATH");
    if (isSet == nullptr)
        GTEST_SKIP() << "no locale with a decimal comma";
    CxXmlElement element("e");
    element.SetDoubleAttribute("x", -0.5);
    double read = 0, queried = 0;
    element.Attribute("x", &read);
    element.QueryDoubleAttribute("x", &queried);
    const CStdString text = CStdString::Format("%g %g %g %g %s", CxXmlText("2.75").ToDouble(),
                                               element.FirstAttribute()->DoubleValue(), read,
                                               queried, element.Attribute("x"));
    const std::string point = localeconv()->decimal_point;
    setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(text, "2.75 -0.5 -0.5 -0.5 -0.500000");
    EXPECT_EQ(point, ",");
}
