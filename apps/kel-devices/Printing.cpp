// SPDX-License-Identifier: Apache-2.0
#include "Printing.h"

#include "RecordFields.h"

#include <CommonTools/KelInterface.h>

#include <array>

namespace
{

struct Column {
    const char *title;
    const char *field;
};

constexpr std::array kColumns = {
    Column{"ID", "id"},           Column{"TRANSPORT", "transport"}, Column{"VENDOR", "vendor"},
    Column{"MODEL", "model"},     Column{"SERIAL", "serial"},       Column{"NAME", "userName"},
    Column{"STATE", "stateText"}, Column{"ADDRESS", "address"},     Column{"SEEN BY", "hostAddress"},
};

QByteArray jsonArray(const char *name, const QMap<qint64, Fields> &rows)
{
    QByteArray array = QByteArray("\"") + name + "\":[";
    const char *separator = "";
    for (const Fields &fields : rows) {
        array += separator + fields.json();
        separator = ",";
    }
    return array + ']';
}

QByteArray failuresJson(const Picture &picture)
{
    QByteArray array = "\"errors\":[";
    const char *separator = "";
    const auto &results = picture.results();
    for (auto result = results.begin(); result != results.end(); ++result) {
        if (result.value() != 0) {
            Fields failure;
            failure.add("transport", QString::fromLatin1(transportWord(result.key())));
            failure.add("code", qint64{result.value()});
            failure.add("text", KelInterface::GenerateErrorDesc(static_cast<int>(result.value())));
            array += separator + failure.json();
            separator = ",";
        }
    }
    return array + ']';
}

QString tableLine(const QStringList &cells, const std::array<int, kColumns.size()> &widths)
{
    QString line;
    for (int i = 0; i < cells.size(); ++i) {
        line += cells[i].leftJustified(widths[static_cast<std::size_t>(i)] + 2);
    }
    while (line.endsWith(QLatin1Char(' '))) {
        line.chop(1);
    }
    return line + QLatin1Char('\n');
}

QVector<QStringList> tableRows(const Picture &picture)
{
    QVector<QStringList> rows;
    QStringList titles;
    for (const Column &column : kColumns) {
        titles.append(QString::fromLatin1(column.title));
    }
    rows.append(titles);
    for (const Fields &device : picture.devices()) {
        QStringList cells;
        for (const Column &column : kColumns) {
            cells.append(printable(device.text(column.field)));
        }
        rows.append(cells);
    }
    return rows;
}

const char *eventWord(const EnumerationEvent &event)
{
    switch (event.kind) {
    case KELA_INTERFACE_STATE_INTERFACE_NEW:
        return event.isCard ? "cardNew" : "interfaceNew";
    case KELA_INTERFACE_STATE_INTERFACE_UPDATED:
        return event.isCard ? "cardUpdated" : "interfaceUpdated";
    case KELA_INTERFACE_STATE_INTERFACE_REMOVED:
        return event.isCard ? "cardRemoved" : "interfaceRemoved";
    case KELA_INTERFACE_STATE_DEVICE_NEW:
        return "deviceNew";
    case KELA_INTERFACE_STATE_DEVICE_UPDATED:
        return "deviceUpdated";
    case KELA_INTERFACE_STATE_DEVICE_REMOVED:
        return "deviceRemoved";
    case KELA_INTERFACE_STATE_PASS_BEGIN:
        return "passBegin";
    case KELA_INTERFACE_STATE_PASS_END:
        return "passEnd";
    }
    return "";
}

bool isPassEvent(const EnumerationEvent &event)
{
    return event.kind == KELA_INTERFACE_STATE_PASS_BEGIN || event.kind == KELA_INTERFACE_STATE_PASS_END;
}

bool isInterfaceEvent(const EnumerationEvent &event)
{
    return event.kind <= KELA_INTERFACE_STATE_INTERFACE_REMOVED;
}

QString failureText(quint32 code)
{
    const int number = static_cast<int>(code);
    return KelInterface::GenerateErrorDesc(number) + QLatin1Char(' ') +
           KelInterface::IntCode2DisplayCode(number);
}

QString eventDetails(const EnumerationEvent &event)
{
    if (isPassEvent(event)) {
        return event.code == 0 ? QString() : failureText(event.code);
    }
    QStringList words;
    const QStringList deviceWords = {QStringLiteral("id"),       QStringLiteral("vendor"),
                                     QStringLiteral("model"),    QStringLiteral("serial"),
                                     QStringLiteral("userName"), QStringLiteral("address"),
                                     QStringLiteral("stateText")};
    const QStringList containerWords = {QStringLiteral("id"), QStringLiteral("name")};
    for (const QString &name : isInterfaceEvent(event) ? containerWords : deviceWords) {
        const QString text = event.fields.text(name.toLatin1().constData());
        if (!text.isEmpty()) {
            words.append(printable(text));
        }
    }
    return words.join(QLatin1Char(' '));
}

} // namespace

QByteArray listJson(const Picture &picture)
{
    return '{' + jsonArray("cards", picture.cards()) + ',' + jsonArray("interfaces", picture.interfaces()) +
           ',' + jsonArray("devices", picture.devices()) + ',' + failuresJson(picture) + "}\n";
}

QByteArray listTable(const Picture &picture)
{
    if (picture.devices().isEmpty()) {
        return "No devices.\n";
    }
    const QVector<QStringList> rows = tableRows(picture);
    std::array<int, kColumns.size()> widths = {};
    for (const QStringList &cells : rows) {
        for (int i = 0; i < cells.size(); ++i) {
            int &width = widths[static_cast<std::size_t>(i)];
            width = qMax(width, cells[i].size());
        }
    }
    QString table;
    for (const QStringList &cells : rows) {
        table += tableLine(cells, widths);
    }
    return table.toUtf8();
}

QByteArray failureLines(const Picture &picture)
{
    QString lines;
    const auto &results = picture.results();
    for (auto result = results.begin(); result != results.end(); ++result) {
        if (result.value() != 0) {
            lines += QStringLiteral("kel-devices: %1: %2\n")
                         .arg(QString::fromLatin1(transportWord(result.key())), failureText(result.value()));
        }
    }
    return lines.toUtf8();
}

QByteArray eventJson(const EnumerationEvent &event)
{
    QByteArray line = QByteArray("{\"event\":\"") + eventWord(event) + "\",\"transport\":\"" +
                      transportWord(event.transport) + "\",";
    if (!isPassEvent(event)) {
        const char *const kind = !isInterfaceEvent(event) ? "device" : event.isCard ? "card" : "interface";
        line += QByteArray("\"") + kind + "\":" + event.fields.json() + ',';
    }
    return line + "\"code\":" + QByteArray::number(event.code) + "}\n";
}

QByteArray eventLine(const EnumerationEvent &event)
{
    const QString line = QStringLiteral("%1 %2 %3")
                             .arg(QString::fromLatin1(eventWord(event)), -16)
                             .arg(QString::fromLatin1(transportWord(event.transport)), -10)
                             .arg(eventDetails(event));
    return line.trimmed().toUtf8() + '\n';
}
