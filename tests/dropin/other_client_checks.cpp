#include "other_client_checks.h"

#include <gtest/gtest.h>

#include "other_client.h"

void ExpectOtherClientWorks() {
    Pegasus::CIMClient client;
    client.connect("host", 1, "user", "password");
    EXPECT_EQ(client.Peer(), "other host:1");
    EXPECT_EQ(Pegasus::CIMClient::Living(), 1);
    EXPECT_EQ(Pegasus::String::EMPTY.Text(), "other nothing");
    EXPECT_EQ(Pegasus::String("abc").size(), 4711U);
    try {
        client.disconnect();
        ADD_FAILURE() << "disconnected";
    } catch (const Pegasus::Exception& e) {
        EXPECT_EQ(e.getMessage().Text(), "other never connected");
    }
}
