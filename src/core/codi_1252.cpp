#include "codi_1252.h"

#include <QStringDecoder>

namespace {

// Bytes 0x80 to 0x9F; the rest of the code page is Latin-1.
constexpr char16_t k80a9F[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The byte of a character, or -1 when the code page has none.
int byte1252(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 0x80 || (u >= 0xA0 && u <= 0xFF))
        return u;
    for (int i = 0; i < 32; ++i) {
        if (k80a9F[i] == u)
            return 0x80 + i;
    }
    return -1;
}

} // namespace

bool esUtf8(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(bytes);
    Q_UNUSED(text);
    return !decoder.hasError();
}

QString text1252(const QByteArray &bytes)
{
    QString text;
    text.reserve(bytes.size());
    for (const char b : bytes) {
        const auto u = static_cast<unsigned char>(b);
        text += (u >= 0x80 && u < 0xA0) ? QChar(k80a9F[u - 0x80]) : QChar(u);
    }
    return text;
}

bool es1252(const QString &text)
{
    for (const QChar c : text) {
        if (byte1252(c) < 0)
            return false;
    }
    return true;
}

QByteArray a1252(const QString &text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar c : text) {
        const int b = byte1252(c);
        bytes += static_cast<char>(b < 0 ? '?' : b);
    }
    return bytes;
}
