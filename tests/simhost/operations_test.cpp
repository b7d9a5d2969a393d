#include "simhost/host_test.h"

namespace simhost_test {

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class Operations : public HostTest {
protected:
    /// What an operation returns, as XML.
    std::string Result(const std::string& request) {
        const Reply reply = Ask(request);
        EXPECT_EQ(reply.status, 200);
        return reply.body;
    }
    static int Count(const std::string& text, const std::string& part) {
        int count = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
            ++count;
        }
        return count;
    }
};

TEST_F(Operations, EnumerationGivesNamedInstancesInOrder) {
    EXPECT_THAT(Result(EnumerateCards()), HasSubstr(R"(<IRETURNVALUE>
<VALUE.NAMEDINSTANCE>
<INSTANCENAME CLASSNAME="Card">
<KEYBINDING NAME="Id">
<KEYVALUE VALUETYPE="string">c1</KEYVALUE>
</KEYBINDING>
</INSTANCENAME>
<INSTANCE CLASSNAME="Card" >
<PROPERTY NAME="Id"  TYPE="string">
<VALUE>c1</VALUE>
</PROPERTY>
<PROPERTY NAME="Serial"  TYPE="string">
<VALUE>S1</VALUE>
</PROPERTY>
<PROPERTY NAME="Health"  TYPE="uint16">
<VALUE>2</VALUE>
</PROPERTY>
<PROPERTY.ARRAY NAME="Ports"  TYPE="uint8">
<VALUE.ARRAY>
<VALUE>1</VALUE>
<VALUE.NULL/>
</VALUE.ARRAY>
</PROPERTY.ARRAY>
</INSTANCE>
</VALUE.NAMEDINSTANCE>
<VALUE.NAMEDINSTANCE>
<INSTANCENAME CLASSNAME="Card">
<KEYBINDING NAME="Id">
<KEYVALUE VALUETYPE="string">c2</KEYVALUE>
</KEYBINDING>
</INSTANCENAME>
<INSTANCE CLASSNAME="Card" >
<PROPERTY NAME="Id"  TYPE="string">
<VALUE>c2</VALUE>
</PROPERTY>
<PROPERTY NAME="Serial"  PROPAGATED="true" TYPE="string">
</PROPERTY>
<PROPERTY.ARRAY NAME="Ports"  TYPE="uint8">
</PROPERTY.ARRAY>
</INSTANCE>
</VALUE.NAMEDINSTANCE>
</IRETURNVALUE>)"));
}

TEST_F(Operations, KeysOfEveryKindAreSortedByName) {
    EXPECT_THAT(Result(Enumerate("root/cimv2", "Slot")),
                HasSubstr(R"(<INSTANCENAME CLASSNAME="Slot">
<KEYBINDING NAME="Hot">
<KEYVALUE VALUETYPE="boolean">TRUE</KEYVALUE>
</KEYBINDING>
<KEYBINDING NAME="Number">
<KEYVALUE VALUETYPE="numeric">7</KEYVALUE>
</KEYBINDING>
<KEYBINDING NAME="Tag">
<KEYVALUE VALUETYPE="string">s &quot;1&quot;</KEYVALUE>
</KEYBINDING>
</INSTANCENAME>)"));
}

TEST_F(Operations, EnumerationOfASuperclassGivesWholeInstancesOfItsSubclasses) {
    const std::string result = Result(Enumerate("root/cimv2", "Part"));
    EXPECT_EQ(Count(result, "<INSTANCE CLASSNAME=\"Card\" >"), 2);
    EXPECT_THAT(result, HasSubstr("NAME=\"Health\""));
}

TEST_F(Operations, ASuperclassNeedNotBeDescribed) {
    EXPECT_EQ(Count(Result(Enumerate("root/cimv2", "CIM_Slot")), "<INSTANCE "), 1);
}

TEST_F(Operations, ShallowEnumerationLeavesOutWhatTheClassLacks) {
    CallOptions options;
    options.parameters = Parameter("DeepInheritance", "FALSE");
    EXPECT_THAT(Result(Enumerate("root/cimv2", "Part", options)),
                AllOf(HasSubstr("NAME=\"Serial\""), Not(HasSubstr("NAME=\"Health\""))));
}

TEST_F(Operations, NamesAreFoundInAnyCase) {
    EXPECT_EQ(Count(Result(Enumerate("ROOT/CimV2", "cARD")), "<INSTANCE CLASSNAME=\"Card\" >"), 2);
}

TEST_F(Operations, AnEmptyClassGivesNoReturnValue) {
    EXPECT_THAT(Result(Enumerate("root/cimv2", "Empty")), Not(HasSubstr("IRETURNVALUE")));
}

TEST_F(Operations, PropertyListChoosesProperties) {
    CallOptions options;
    options.parameters =
        "<IPARAMVALUE NAME=\"PropertyList\"><VALUE.ARRAY><VALUE>serial</VALUE></VALUE.ARRAY>"
        "</IPARAMVALUE>";
    EXPECT_EQ(Count(Result(EnumerateCards(options)), "<PROPERTY"), 2);
    options.parameters = "<IPARAMVALUE NAME=\"PropertyList\"><VALUE.ARRAY/></IPARAMVALUE>";
    EXPECT_EQ(Count(Result(EnumerateCards(options)), "<PROPERTY"), 0);
}

TEST_F(Operations, ClassOriginsAreSentOnRequest) {
    CallOptions options;
    options.parameters = Parameter("IncludeClassOrigin", "TRUE");
    EXPECT_THAT(Result(EnumerateCards(options)),
                AllOf(HasSubstr("<PROPERTY NAME=\"Serial\"  CLASSORIGIN=\"Part\" TYPE="),
                      HasSubstr("<PROPERTY NAME=\"Health\"  CLASSORIGIN=\"Card\" TYPE=")));
}

TEST_F(Operations, QualifiersAreSentOnRequest) {
    CallOptions options;
    options.parameters = Parameter("IncludeQualifiers", "TRUE");
    EXPECT_THAT(Result(EnumerateCards(options)),
                HasSubstr(R"(<PROPERTY NAME="Health"  TYPE="uint16">
<QUALIFIER NAME="ValueMap" TYPE="string">
<VALUE.ARRAY>
<VALUE>2</VALUE>
<VALUE>3</VALUE>
</VALUE.ARRAY>
</QUALIFIER>
<QUALIFIER NAME="Values" TYPE="string">
<VALUE.ARRAY>
<VALUE>OK</VALUE>
<VALUE>Degraded</VALUE>
</VALUE.ARRAY>
</QUALIFIER>
<VALUE>2</VALUE>
</PROPERTY>)"));
}

TEST_F(Operations, AssociatorsComeWithHostAndNamespace) {
    EXPECT_THAT(Result(AssociateFirstCard()), HasSubstr(R"(<IRETURNVALUE>
<VALUE.OBJECTWITHPATH>
<INSTANCEPATH>
<NAMESPACEPATH>
<HOST>esx01</HOST>
<LOCALNAMESPACEPATH>
<NAMESPACE NAME="root"/>
<NAMESPACE NAME="cimv2"/>
</LOCALNAMESPACEPATH>
</NAMESPACEPATH>
<INSTANCENAME CLASSNAME="Slot">)"));
}

TEST_F(Operations, AssociatorsWorkFromTheOtherEnd) {
    const std::string keys =
        Key("Tag", "s &quot;1&quot;") +
        "<KEYBINDING NAME=\"Number\"><KEYVALUE VALUETYPE=\"numeric\">7</KEYVALUE></KEYBINDING>"
        "<KEYBINDING NAME=\"Hot\"><KEYVALUE VALUETYPE=\"boolean\">TRUE</KEYVALUE></KEYBINDING>";
    EXPECT_THAT(Result(Associators("root/cimv2", "Slot", keys)),
                HasSubstr("<INSTANCE CLASSNAME=\"Card\" >"));
}

TEST_F(Operations, AnObjectWithoutAssociationsHasNone) {
    EXPECT_THAT(Result(Associators("root/cimv2", "Card", Key("Id", "c2"))),
                Not(HasSubstr("IRETURNVALUE")));
}

struct Filter {
    const char* name;
    std::string parameters;
    int found;
};

class AssociationFilters : public Operations, public ::testing::WithParamInterface<Filter> {};

TEST_P(AssociationFilters, LetThroughWhatFits) {
    CallOptions options;
    options.parameters = GetParam().parameters;
    EXPECT_EQ(Count(Result(AssociateFirstCard(options)), "<INSTANCE "), GetParam().found);
}

const Filter kFilters[] = {
    {"AssociationClass", ClassParameter("AssocClass", "cardinslot"), 1},
    {"OtherAssociationClass", ClassParameter("AssocClass", "Nothing"), 0},
    {"NoAssociationClass", "<IPARAMVALUE NAME=\"AssocClass\">\n</IPARAMVALUE>\n", 1},
    {"ResultClass", ClassParameter("ResultClass", "Slot"), 1},
    {"SuperclassOfTheResult", ClassParameter("ResultClass", "CIM_Slot"), 1},
    {"OtherResultClass", ClassParameter("ResultClass", "Card"), 0},
    {"Role", Parameter("Role", "Antecedent"), 1},
    {"OtherRole", Parameter("Role", "Place"), 0},
    {"ResultRole", Parameter("ResultRole", "place"), 1},
    {"OtherResultRole", Parameter("ResultRole", "Antecedent"), 0},
};

INSTANTIATE_TEST_SUITE_P(Each, AssociationFilters, ::testing::ValuesIn(kFilters),
                         [](const auto& test) { return std::string(test.param.name); });

struct Failure {
    const char* name;
    std::string (*request)(const std::string& headers);
    int code;
    const char* description;
    const char* encoded;
};

const Failure kFailures[] = {
    {"UnknownNamespace",
     [](const std::string& h) {
         return Enumerate("root/x", "Card", {h, ""});
     },
     3, "CIM_ERR_INVALID_NAMESPACE: root/x", "CIM_ERR_INVALID_NAMESPACE%3A%20root%2Fx"},
    {"NoClass",
     [](const std::string& h) { return Call("EnumerateInstances", "root/cimv2", "", h); }, 4,
     "CIM_ERR_INVALID_PARAMETER: ClassName", "CIM_ERR_INVALID_PARAMETER%3A%20ClassName"},
    {"UnknownClass",
     [](const std::string& h) {
         return Enumerate("root/cimv2", "X", {h, ""});
     },
     5, "CIM_ERR_INVALID_CLASS: X", "CIM_ERR_INVALID_CLASS%3A%20X"},
    {"UnknownSourceClass",
     [](const std::string& h) {
         return Associators("root/cimv2", "X", "", {h, ""});
     },
     5, "CIM_ERR_INVALID_CLASS: X", "CIM_ERR_INVALID_CLASS%3A%20X"},
    {"UnknownSource",
     [](const std::string& h) {
         return Associators("root/cimv2", "Card", Key("Id", "c9"), {h, ""});
     },
     6, "CIM_ERR_NOT_FOUND: Card.Id=&quot;c9&quot;", "CIM_ERR_NOT_FOUND%3A%20Card.Id%3D%22c9%22"},
    {"OtherOperation", [](const std::string& h) { return Call("GetClass", "root/cimv2", "", h); },
     7, "CIM_ERR_NOT_SUPPORTED: GetClass", "CIM_ERR_NOT_SUPPORTED%3A%20GetClass"},
};

class CimErrors : public Operations, public ::testing::WithParamInterface<Failure> {};

TEST_P(CimErrors, AreInTheTrailersWhenTheClientTakesThem) {
    const Reply reply = Ask(GetParam().request("TE: chunked, trailers\r\n"));
    EXPECT_EQ(reply.status, 200);
    EXPECT_TRUE(reply.complete);
    EXPECT_EQ(reply.trailers, "CIMStatusCode: " + std::to_string(GetParam().code) +
                                  "\r\nCIMStatusCodeDescription: " + GetParam().encoded + "\r\n");
    EXPECT_THAT(reply.body, AllOf(HasSubstr("<IMETHODRESPONSE NAME="), Not(HasSubstr("ERROR"))));
}

TEST_P(CimErrors, AreAnElementOtherwise) {
    const Reply reply = Ask(GetParam().request(""));
    EXPECT_EQ(reply.status, 200);
    EXPECT_FALSE(reply.HasHeader("Transfer-Encoding"));
    EXPECT_THAT(reply.body,
                HasSubstr("<ERROR CODE=\"" + std::to_string(GetParam().code) + "\" DESCRIPTION=\"" +
                          GetParam().description + "\">\n</ERROR>"));
}

INSTANTIATE_TEST_SUITE_P(Each, CimErrors, ::testing::ValuesIn(kFailures),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(Operations, AreKeptForLaterInspection) {
    CallOptions options;
    options.parameters =
        ClassParameter("AssocClass", "CardInSlot") + ClassParameter("ResultClass", "Slot");
    const std::string sent = AssociateFirstCard(options);
    Ask(sent);
    const auto requests = Server().requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].operation, "Associators");
    EXPECT_EQ(requests[0].name_space, "root/cimv2");
    EXPECT_EQ(requests[0].class_name, "Card");
    EXPECT_EQ(requests[0].source_path, "Card.Id=\"c1\"");
    EXPECT_EQ(requests[0].association_class, "CardInSlot");
    EXPECT_EQ(requests[0].result_class, "Slot");
    EXPECT_TRUE(requests[0].authorised);
    EXPECT_EQ(requests[0].connection, 1U);
    EXPECT_EQ(requests[0].head + requests[0].body, sent);
    Server().ForgetRequests();
    EXPECT_TRUE(Server().requests().empty());
    EXPECT_EQ(Server().counters().requests, 1U);
}

}  // namespace

}  // namespace simhost_test
