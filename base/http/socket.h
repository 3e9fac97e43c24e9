// What the server asks of the system's sockets.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace zentaro::http {

using Clock = std::chrono::steady_clock;

/// One end of a connection as httplib passes it around; not owned.
using SocketHandle = std::intptr_t;

/// Child processes do not inherit it, and short answers leave at once.
void prepareSocket(SocketHandle socket);
/// No other program listens at the same port.
void takeDoor(SocketHandle listener);
/// How many bytes came, 0 at the end of the stream, -1 when none came until the deadline or the connection is lost.
std::ptrdiff_t receiveSome(SocketHandle socket, char* bytes, std::size_t size, Clock::time_point deadline);
/// Whether all of them were taken by the system until the deadline.
bool sendAll(SocketHandle socket, const char* bytes, std::size_t size, Clock::time_point deadline);
/// Whether the other side has not hung up.
bool isConnected(SocketHandle socket);
/// Wakes whoever waits in receiveSome and sendAll; both fail from now on.
void shutDown(SocketHandle socket);
/// No more will be sent; what the other side still sends can be received.
void endSending(SocketHandle socket);
void closeSocket(SocketHandle socket);
/// More connections wait at the door than httplib asks for.
void widenDoor(SocketHandle listener);
/// How many descriptors the process may have open.
std::size_t descriptorLimit();

}  // namespace zentaro::http
