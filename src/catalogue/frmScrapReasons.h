#pragma once

#include "platform/gui/KeyedList.h"
#include "platform/gui/SharedForm.h"

#include "ui_frmScrapReasons.h"

/// "Scrap Reasons": the reasons that the scrap dialog offers. Deleting one that scrap records refer to is allowed;
/// they keep its number.
class frmScrapReasons : public QDialog, public SharedForm<frmScrapReasons>
{
    Q_OBJECT
public:
    Ui::frmScrapReasons ui;

private:
    friend class SharedForm<frmScrapReasons>;
    frmScrapReasons();
    void load();
    /// Number of the selected reason; nothing when none is selected.
    std::optional<int> selectedReason() const;
    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();

    KeyedList m_reasons;
};
