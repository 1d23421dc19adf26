#include "remote/listener.h"

#include "exec/file_descriptor.h"
#include "platform/peer.h"
#include "remote/local_address.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane::remote {

namespace {

constexpr int kQueue = 16;

/// A socket that listens at Corvane's address; closed when it cannot.
FileDescriptor listeningSocket()
{
    const auto address = LocalAddress::ofCorvane();
    FileDescriptor socket(address ? ::socket(AF_UNIX, SOCK_STREAM, 0) : -1);
    if (!socket.isOpen()) return {};
    ::fcntl(socket.number(), F_SETFD, FD_CLOEXEC);
    // What a killed Corvane left behind is in the way.
    ::unlink(address->path());
    // Until the rights are set, the folder keeps others out.
    const bool listens = ::bind(socket.number(), address->pointer(), address->size()) == 0 &&
                         ::chmod(address->path(), 0600) == 0 && ::listen(socket.number(), kQueue) == 0;
    return listens ? std::move(socket) : FileDescriptor();
}

} // namespace

Listener::Listener(Conversation::Handler handler)
    : m_handler(std::move(handler))
{
    connect(&m_server, &QLocalServer::newConnection, this, &Listener::welcome);
}

Listener::~Listener() = default;

bool Listener::open()
{
    const FileDescriptor socket = listeningSocket();
    // The server takes a copy, so that it alone closes it.
    return socket.isOpen() && m_server.listen(qintptr(::fcntl(socket.number(), F_DUPFD_CLOEXEC, 0)));
}

void Listener::welcome()
{
    while (std::unique_ptr<QLocalSocket> socket{m_server.nextPendingConnection()}) {
        socket->setParent(nullptr);
        const auto user = platform::peerUser(static_cast<int>(socket->socketDescriptor()));
        const bool full = findChildren<Conversation *>(Qt::FindDirectChildrenOnly).size() >= kMostConversations;
        if (user == ::geteuid() && !full) new Conversation(std::move(socket), m_handler, this);
    }
}

} // namespace corvane::remote
