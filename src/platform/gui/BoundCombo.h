#pragma once

#include "platform/engine/Recordset.h"

#include <QComboBox>

#include <functional>

/// A combo box filled from the rows of a statement: it shows one field and hands out another. Two rows with the same
/// shown text stay two choices.
///
/// Typing completes in the box to the first row that begins so, whatever the capitals and accents, and a typed text
/// that is no row's counts as empty: nothing is stored that was not offered. With `freeText` (set in the form's .ui
/// file) a typed text stays as it is, to the capitals; it is completed only where a single row begins so, and Backspace
/// or Delete takes the completion away.
class BoundCombo : public QComboBox
{
    Q_OBJECT
    Q_PROPERTY(bool freeText READ isFreeText WRITE setFreeText)
public:
    explicit BoundCombo(QWidget *parent = nullptr);
    ~BoundCombo() override;

    bool isFreeText() const { return m_freeText; }
    void setFreeText(bool freeText) { m_freeText = freeText; }
    /// A typed or scanned bound value counts as its row, like the number on an employee's badge.
    void setTakesBoundValue(bool takes) { m_takesBoundValue = takes; }

    /// Offers `rows`: shows the field `listField` of each and hands out `boundField`. The text shown is cleared. Combo
    /// boxes may share one recordset. @throws EngineError 3265 for a field that the rows do not have.
    void setSource(std::shared_ptr<Recordset> rows, const QString &listField, const QString &boundField);
    void setSource(Recordset rows, const QString &listField, const QString &boundField);
    using Fetch = std::function<std::shared_ptr<Recordset>()>;
    /// The same, but the choices are fetched when the box is first opened, typed into or given a text. After an error,
    /// which the user is shown, the next attempt fetches again.
    void setSource(Fetch fetch, const QString &listField, const QString &boundField);
    /// No choices, no text.
    void clearSource();

    /// The text shown; empty while it is no row's, unless the box takes free texts.
    QString text() const;
    /// Shows `text` as if the user had chosen it: the choice is the first row with that text, in any case. Where
    /// several rows have the same text, findData() tells the row of a bound value, given as text, for
    /// setCurrentIndex().
    void setText(const QString &text);
    /// Shows a text that is no choice, though a row may have the same: what a record says that is not offered any more.
    /// `why` tells the user so until something is chosen or typed.
    void showUnoffered(const QString &text, const QString &why);
    /// Empty unless such a text is shown.
    QString whyUnoffered() const { return m_whyUnoffered; }
    /// The bound field of the choice; empty when there is none.
    Value boundValue() const;

    void showPopup() override;

signals:
    /// Another choice was made, by hand or by setText(). Not while the user is still typing.
    void chosen();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    class Rows;
    void take(std::unique_ptr<Rows> rows);
    void fetchRows();
    int chosenRow() const;
    int rowToComplete(const QString &typed) const;
    void lineEdit_TextEdited(const QString &text);
    void commit();

    bool m_freeText = false;
    bool m_takesBoundValue = false;
    std::unique_ptr<Rows> m_rows; ///< null before the first source
    std::function<void()> m_fetch; ///< until the choices are there
    QString m_typed; ///< what the user has typed of the text, the rest is completed
    QString m_whyUnoffered;
    std::pair<int, QString> m_announced{-1, {}};
};
