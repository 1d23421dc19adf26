#include "api/http_message.h"

#include "facts/addresses.h"

namespace corvane {

QByteArray headOf(const HttpRequest &request)
{
    QByteArray head = request.verb + ' ' + request.target + " HTTP/1.1\r\n";
    head += QByteArray("Host: ") + kPiholeAddress.data() + ':' + QByteArray::number(request.port) + "\r\n";
    head += "User-Agent: Corvane\r\nAccept: */*\r\n";
    for (const auto &[name, value] : request.headers)
        head += name + ": " + value + "\r\n";
    if (request.verb != "GET") head += "Content-Length: " + QByteArray::number(request.body.size()) + "\r\n";
    return head + "\r\n";
}

} // namespace corvane
