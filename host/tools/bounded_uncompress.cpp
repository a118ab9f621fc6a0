#include "tools/bounded_uncompress.h"

#include <QtEndian>

#include <zlib.h>

#include <algorithm>
#include <limits>

namespace tools {

namespace {

constexpr qsizetype HeaderSize = 4; // big-endian size of what was compressed
constexpr qsizetype FirstStep = qsizetype(64) * 1024;

/// Inflates into at most `claimed` bytes; the memory grows with what is really there, not with the claim.
QByteArray inflateAll(z_stream & stream, qsizetype claimed)
{
    QByteArray result;
    qsizetype written = 0;
    while (true) {
        // One byte more than claimed tells a stream that ends from one that goes on.
        const qsizetype room = std::min(std::max(FirstStep, 2 * written), claimed + 1);
        result.resize(room);
        stream.next_out = reinterpret_cast<Bytef *>(result.data()) + written;
        stream.avail_out = static_cast<uInt>(room - written);
        const int status = inflate(&stream, Z_NO_FLUSH);
        written = room - static_cast<qsizetype>(stream.avail_out);
        if (written > claimed) {
            return {};
        }
        if (status == Z_STREAM_END) {
            result.truncate(written);
            return result;
        }
        if (status != Z_OK || (stream.avail_in == 0 && stream.avail_out > 0)) {
            return {};
        }
    }
}

} // namespace

QByteArray boundedUncompress(const QByteArray & compressed, qsizetype limit)
{
    if (compressed.size() <= HeaderSize ||
        compressed.size() > static_cast<qsizetype>(std::numeric_limits<uInt>::max())) {
        return {};
    }
    const auto claimed = static_cast<qsizetype>(qFromBigEndian<quint32>(compressed.constData()));
    if (claimed > limit) {
        return {};
    }
    QByteArray input = compressed.mid(HeaderSize);
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) {
        return {};
    }
    stream.next_in = reinterpret_cast<Bytef *>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    QByteArray result = inflateAll(stream, claimed);
    inflateEnd(&stream);
    return result;
}

} // namespace tools
