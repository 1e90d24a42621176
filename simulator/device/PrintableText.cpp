#include "simulator/device/PrintableText.h"

#include <algorithm>

QString printableText(const QByteArray& typed)
{
    constexpr qsizetype k_longest = 40;

    QByteArray text = typed.left(k_longest);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return QString::fromLatin1(text) + (typed.size() > k_longest ? QStringLiteral("...") : QString());
}
