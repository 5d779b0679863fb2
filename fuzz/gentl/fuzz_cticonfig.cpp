// SPDX-License-Identifier: Apache-2.0
// Any text as the stored states of the default producers.
#include "DeviceEnumMng/KelGenTLMenu/CtiConfigFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(static_cast<const char *>(static_cast<const void *>(data)), static_cast<int>(size));
    const CtiConfigFile::States states = CtiConfigFile::parse(QString::fromUtf8(bytes));

    // What was read is written so that it reads the same.
    QString value;
    for (auto state = states.cbegin(); state != states.cend(); ++state) {
        value += CtiConfigFile::piece(state.key(), state.value());
    }
    CtiConfigFile::States again = CtiConfigFile::parse(value);
    // A name of blanks alone leaves no part to be a name.
    CtiConfigFile::States expected = states;
    expected.remove(QString());
    if (again != expected) {
        std::abort();
    }
    CtiConfigFile::merge(again, states.keys());
    if (again.keys() != states.keys()) {
        std::abort();
    }
    return 0;
}
