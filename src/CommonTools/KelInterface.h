// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CommonTools/CommonToolsExport.h>

#include <QFileDialog>
#include <QString>

class QWidget;

/// Tools that the parts of a camera client share: where its data lies, how device texts are decoded,
/// the user's device filters, and texts of error codes.
///
/// Thread: the encoding functions may be called from any thread; the rest belongs to the GUI thread.
namespace KelInterface
{

/// Character encodings of device texts, as SetEncodingType takes them.
enum EncodingType {
    EncodingUtf8 = 0, ///< the default
    EncodingLocale = 1,
    EncodingGb18030 = 2,
    EncodingBig5 = 3,
    EncodingShiftJis = 4,
    EncodingEucKr = 5,
    EncodingLatin1 = 6,
};

/// State of the vendor filter and of the model filter.
enum FilterState {
    FilterOff = 0,
    FilterInclude = 1,
    FilterExclude = 2,
};

/// Folder of the program's data, without a trailing separator: "KELS" in the user's generic data
/// location, or the folder that the environment variable KELS_PROGRAM_DATA names. Made when missing.
COMMONTOOLS_EXPORT QString programDataPath();

/// Chooses the encoding of device texts for the whole process. An unknown number is ignored.
COMMONTOOLS_EXPORT void SetEncodingType(int nEncodeType);

/// The encoding in use.
COMMONTOOLS_EXPORT int GetEncodingType();

/// Decodes a text field in the encoding in use, up to its first NUL or @p nLength bytes.
COMMONTOOLS_EXPORT QString GetEncodeQStringFromUnChar(const unsigned char *pText, int nLength);

/// @copydoc GetEncodeQStringFromUnChar
COMMONTOOLS_EXPORT QString GetEncodeQStringFromChar(const char *pText, int nLength);

/// Decodes a text field as UTF-8, up to its first NUL or @p nLength bytes.
COMMONTOOLS_EXPORT QString uchar2QString(const unsigned char *pText, int nLength);

/// Decodes a text field in the locale's encoding, up to its first NUL or @p nLength bytes.
COMMONTOOLS_EXPORT QString uchar2QStringLocale(const unsigned char *pText, int nLength);

/// @copydoc uchar2QStringLocale
COMMONTOOLS_EXPORT QString char2QStringLocale(const char *pText, int nLength);

/// The user's vendor filter, a FilterState. Read from "DeviceFilter.ini" at every call. A number that is
/// no FilterState is given as it stands there: nothing passes then. What is missing or no 32-bit
/// number is FilterOff.
COMMONTOOLS_EXPORT int vendorFilterState();
/// Vendors that the filter includes, separated by "/".
COMMONTOOLS_EXPORT QString vendorFilterInclude();
/// Vendors that the filter excludes, separated by "/".
COMMONTOOLS_EXPORT QString vendorFilterExclude();
/// The user's model filter, a FilterState or an unknown number, as vendorFilterState() gives it.
COMMONTOOLS_EXPORT int modelFilterState();
/// Models that the filter includes, separated by "/".
COMMONTOOLS_EXPORT QString modelFilterInclude();
/// Models that the filter excludes, separated by "/".
COMMONTOOLS_EXPORT QString modelFilterExclude();

/// Stores the vendor filter.
/// @return false when the file could not be written
COMMONTOOLS_EXPORT bool setVendorFilter(int nState, const QString &strInclude, const QString &strExclude);
/// Stores the model filter.
/// @return false when the file could not be written
COMMONTOOLS_EXPORT bool setModelFilter(int nState, const QString &strInclude, const QString &strExclude);

/// A sentence for a result code of the device access, translated.
COMMONTOOLS_EXPORT QString GenerateErrorDesc(int nErrorCode);

/// A result code as it is shown to people: "[0x90000005]".
COMMONTOOLS_EXPORT QString IntCode2DisplayCode(int nErrorCode);

/// True when @p value has every bit of @p flag; for flag 0, when value is 0.
COMMONTOOLS_EXPORT bool testFlag(int flag, int value);

/// Asks the user for a file.
/// @param pParent            window to stand over, or null
/// @param pstrSelectedFilter receives the filter that the user chose; may be null
/// @return the chosen path, empty when the user cancelled
COMMONTOOLS_EXPORT QString getOpenFileName(QWidget *pParent, const QString &strCaption,
                                           const QString &strFolder, const QString &strFilter,
                                           QString *pstrSelectedFilter = nullptr,
                                           QFileDialog::Options options = QFileDialog::Options());

} // namespace KelInterface
