#pragma once

#include <QAbstractItemModel>

/// What a list, a table or a combo box shows in one of its columns, from top to bottom.
inline QStringList textsOf(const QAbstractItemModel *model, int column = 0)
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts.append(model->index(row, column).data().toString());
    return texts;
}
