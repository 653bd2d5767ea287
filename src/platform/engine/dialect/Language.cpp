#include "platform/engine/dialect/Language.h"

QString dialect::filled(const char *form, std::initializer_list<QString> parts)
{
    QString text;
    for (; *form; ++form) {
        if (form[0] == '%' && form[1] >= '1' && form[1] <= '9')
            text += parts.begin()[*++form - '1'];
        else
            text += QLatin1Char(*form);
    }
    return text;
}
