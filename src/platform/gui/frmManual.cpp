#include "platform/gui/frmManual.h"

#include <QApplication>

frmManual::frmManual()
{
    ui.setupUi(this);
    // Not every desktop's dark palette has a colour for links.
    const QPalette colours = palette();
    if (colours.color(QPalette::Base).lightness() < 128 && colours.color(QPalette::Link).lightness() < 150)
        ui.txtPage->document()->setDefaultStyleSheet("a { color: #6cb6ff; }");
    connect(ui.txtPage, &QTextBrowser::sourceChanged, this, [this] { setWindowTitle(ui.txtPage->documentTitle()); });
    connect(ui.txtPage, &QTextBrowser::backwardAvailable, ui.cmdBack, &QWidget::setEnabled);
    connect(ui.cmdBack, &QPushButton::clicked, ui.txtPage, &QTextBrowser::backward);
    connect(ui.cmdHome, &QPushButton::clicked, this,
            [this] { ui.txtPage->setSource(ui.txtPage->source().resolved(QUrl("index.html"))); });
    connect(ui.cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void frmManual::showPage(const QUrl &page)
{
    // A modal dialog takes the mouse and the keys from all windows but its own children.
    setParent(QApplication::activeModalWidget(), windowFlags());
    ui.txtPage->setSource(page);
    ui.txtPage->setFocus();
    show();
    raise();
    activateWindow();
}
