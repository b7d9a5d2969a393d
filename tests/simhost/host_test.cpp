#include "simhost/host_test.h"

namespace simhost_test {

simhost::HostDescription HostTest::SmallHost() {
    return simhost::HostDescription::FromJson(R"({"name": "esx01", "namespaces": {"root/cimv2": {
        "classes": {
            "Part": {"keys": ["Id"], "properties": {"Id": "string", "Serial": "string"}},
            "Card": {"superclass": "Part",
                "properties": {"Health": {"type": "uint16", "qualifiers":
                                   {"ValueMap": ["2", "3"], "Values": ["OK", "Degraded"]}},
                               "Ports": "uint8[]"},
                "instances": [{"Id": "c1", "Serial": "S1", "Health": 2, "Ports": [1, null]},
                              {"Id": "c2", "Serial": null, "Ports": null}]},
            "Slot": {"superclass": "CIM_Slot", "keys": ["Tag", "Number", "Hot"],
                "properties": {"Tag": "string", "Number": "uint8", "Hot": "boolean"},
                "instances": [{"Tag": "s \"1\"", "Number": 7, "Hot": true}]},
            "Empty": {}},
        "associations": [{"class": "CardInSlot", "from": "Card.Id=\"c1\"",
            "to": "Slot.Tag=\"s \\\"1\\\"\",Number=7,Hot=TRUE", "to_role": "Place"}]}}})",
                                              "small host");
}

}  // namespace simhost_test
