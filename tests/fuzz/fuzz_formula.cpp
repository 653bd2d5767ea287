#include "platform/report/Formula.h"
#include "platform/report/ResultCode.h"

#include <array>

namespace {

const std::array<Value, 8> values = {Value(),
                                     Value(0),
                                     Value(-1),
                                     Value(12.5),
                                     Value(QString()),
                                     Value(QStringLiteral("Drill")),
                                     Value(QStringLiteral("12")),
                                     Value(QStringLiteral("2024-03-04 05:06:07"))};

FieldKind kindOf(const Field &field)
{
    switch (field.column.size() % 4) {
    case 0:
        return FieldKind::Number;
    case 1:
        return FieldKind::DateTime;
    case 2:
        return FieldKind::YesNo;
    default:
        return FieldKind::Text;
    }
}

}

/// A formula is read and tried on records, or refused; nothing else may happen.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    try {
        FieldList fields;
        Formula formula =
            Formula::parse(QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)), fields);
        for (int number = 0; number < fields.count(); ++number)
            fields.at(number).kind = kindOf(fields.at(number));
        formula.bind(fields);
        for (size_t first = 0; first < values.size(); ++first) {
            std::vector<Value> record;
            for (int number = 0; number < fields.count(); ++number)
                record.push_back(values[(first + number) % values.size()]);
            formula.matches(record.data());
        }
    } catch (const ReportError &) {
    }
    return 0;
}
