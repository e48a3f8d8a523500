// SPDX-License-Identifier: Apache-2.0
#include "scratch.hpp"
#include "supplicant/control_server.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace wivex {

namespace {

using bench::Client;
using bench::ControlServer;
using WhenFull = bench::ControlServer::WhenFull;

// A socket at `path` as whoever sends to it addresses it.
Client at(const std::string& path) {
    Client client;
    client.address.sun_family = AF_UNIX;
    path.copy(client.address.sun_path, sizeof(client.address.sun_path) - 1);
    client.length = sizeof(client.address);
    return client;
}

class ControlServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(server_.open(server_path_));
        ASSERT_TRUE(client_.open(client_path_));
    }

    test_support::ScratchDirectory folder_;
    const std::string server_path_ = folder_ / "wlan0";
    const std::string client_path_ = folder_ / "wpa_ctrl_7-1";
    ControlServer server_;
    ControlServer client_;
};

TEST_F(ControlServerTest, receives_a_command_and_knows_who_sent_it) {
    client_.send(at(server_path_), "PING", WhenFull::waits);

    const auto command = server_.receive();
    ASSERT_TRUE(command);
    EXPECT_EQ(command->text, "PING");
    EXPECT_EQ(command->client.name(), client_path_);
}

TEST_F(ControlServerTest, receives_nothing_when_no_command_has_come) {
    EXPECT_FALSE(server_.receive());
}

TEST_F(ControlServerTest, answers_the_client_that_sent_the_command) {
    client_.send(at(server_path_), "PING", WhenFull::waits);
    const auto command = server_.receive();
    ASSERT_TRUE(command);

    EXPECT_TRUE(server_.send(command->client, "PONG\n", WhenFull::waits));
    const auto reply = client_.receive();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->text, "PONG\n");
}

TEST_F(ControlServerTest, fails_to_send_to_a_client_whose_queue_is_full) {
    constexpr int more_than_any_queue = 100'000;
    int sent = 0;
    while (sent < more_than_any_queue && server_.send(at(client_path_), "EVENT", WhenFull::fails)) {
        ++sent;
    }
    EXPECT_GT(sent, 0);
    EXPECT_LT(sent, more_than_any_queue);
}

TEST_F(ControlServerTest, does_not_mind_a_client_that_is_gone) {
    client_.close();
    EXPECT_TRUE(server_.send(at(client_path_), "EVENT", WhenFull::fails));
}

TEST_F(ControlServerTest, knows_each_attached_client_once) {
    server_.attach(at(client_path_));
    server_.attach(at(client_path_));
    EXPECT_EQ(server_.attached().size(), 1U);

    server_.detach(at(client_path_));
    EXPECT_TRUE(server_.attached().empty());
}

TEST_F(ControlServerTest, forgets_who_was_attached_when_it_closes) {
    server_.attach(at(client_path_));
    server_.close();

    EXPECT_FALSE(server_.is_open());
    EXPECT_TRUE(server_.attached().empty());
}

TEST_F(ControlServerTest, takes_the_place_of_a_server_that_died) {
    server_.close();
    ControlServer next;
    ASSERT_TRUE(next.open(server_path_));

    client_.send(at(server_path_), "PING", WhenFull::waits);
    EXPECT_TRUE(next.receive());
}

TEST_F(ControlServerTest, cannot_listen_in_a_folder_that_is_missing) {
    ControlServer nowhere;
    EXPECT_FALSE(nowhere.open(folder_ / "missing/wlan0"));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(nowhere.is_open());
}

} // namespace

} // namespace wivex
