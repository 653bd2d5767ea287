#pragma once

#include <QObject>
#include <QString>

class BoundCombo;
class QLabel;
class QLineEdit;

/// The boxes in which check-out and scrap ask for a person and for the job or overhead operation to charge: reads
/// their lists and keeps them in step. Enter in one that is chosen goes on to the next while no job is.
class JobPicker : public QObject
{
    Q_OBJECT
public:
    struct Boxes {
        BoundCombo *dbcEmp;
        QLineEdit *txtEmpNo; ///< shows the chosen employee's number
        BoundCombo *dbcJobType;
        BoundCombo *dbcJob;
        QLabel *lblJob; ///< names what `dbcJob` lists; blank until a job type is chosen
    };
    /// What the dialogs say and order differently.
    struct Wording {
        QString jobLabel;
        QString overheadOrder; ///< the column that orders the operations
    };
    /// Lists the active employees and the job types; nothing is chosen.
    JobPicker(const Boxes &boxes, const Wording &wording, QObject *parent);

    /// Lists the open jobs or the overhead operations, as the job type says, and clears what was chosen.
    void GetJobOverheadList();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void dbcEmp_Change();

    Boxes m_boxes;
    Wording m_wording;
};
