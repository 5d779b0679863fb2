// SPDX-License-Identifier: Apache-2.0
#include <CommonTools/KelInterface.h>

#include <QTextCodec>

#include <array>
#include <atomic>
#include <cstring>

// Device texts come as bytes without a word about their encoding; the user says which it is. One choice
// holds for the whole process, and workers decode while the user changes it.

namespace
{

std::atomic<int> g_encoding{KelInterface::EncodingUtf8};

QTextCodec *codecOf(int encoding)
{
    static constexpr std::array<const char *, 7> kNames = {
        "UTF-8", nullptr, "GB18030", "Big5", "Shift_JIS", "EUC-KR", "ISO-8859-1",
    };
    const char *name = kNames.at(static_cast<std::size_t>(encoding));
    QTextCodec *codec = name ? QTextCodec::codecForName(name) : QTextCodec::codecForLocale();
    return codec ? codec : QTextCodec::codecForName("UTF-8");
}

// A codec silently drops a character that the field's end cuts in two: it waits for the rest. A line break
// behind it, which is no part of any character in these encodings, brings the replacement character out.
QString decodeClosed(const QTextCodec &codec, const char *text, int length)
{
    QString decoded = codec.toUnicode(QByteArray(text, length) + '\n');
    decoded.chop(1);
    return decoded;
}

QString decode(const char *text, int length, int encoding)
{
    if (!text || length <= 0) {
        return QString();
    }
    const auto used = static_cast<int>(::strnlen(text, static_cast<std::size_t>(length)));
    return encoding == KelInterface::EncodingUtf8 ? QString::fromUtf8(text, used)
                                                  : decodeClosed(*codecOf(encoding), text, used);
}

QString decode(const unsigned char *text, int length, int encoding)
{
    return decode(reinterpret_cast<const char *>(text), length, encoding);
}

} // namespace

namespace KelInterface
{

void SetEncodingType(int nEncodeType)
{
    if (nEncodeType >= EncodingUtf8 && nEncodeType <= EncodingLatin1) {
        g_encoding = nEncodeType;
    }
}

int GetEncodingType()
{
    return g_encoding;
}

QString GetEncodeQStringFromUnChar(const unsigned char *pText, int nLength)
{
    return decode(pText, nLength, g_encoding);
}

QString GetEncodeQStringFromChar(const char *pText, int nLength)
{
    return decode(pText, nLength, g_encoding);
}

QString uchar2QString(const unsigned char *pText, int nLength)
{
    return decode(pText, nLength, EncodingUtf8);
}

QString uchar2QStringLocale(const unsigned char *pText, int nLength)
{
    return decode(pText, nLength, EncodingLocale);
}

QString char2QStringLocale(const char *pText, int nLength)
{
    return decode(pText, nLength, EncodingLocale);
}

} // namespace KelInterface
