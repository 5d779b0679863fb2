// SPDX-License-Identifier: Apache-2.0
#include <CommonTools/KelInterface.h>

int main()
{
    return KelInterface::programDataPath().endsWith(QStringLiteral("/KELS")) ? 0 : 1;
}
