#pragma once

#include <QLocale>
#include <QPageSize>

#include <functional>

/// The paper of templates that name none.
namespace UsualPaper {

/// Letter, until the program says whom to ask.
QPageSize size();
/// Asked for each such template from then on.
void ask(std::function<QPageSize()> size);

/// Letter where it is what shops have, and where nobody knows; A4 everywhere else.
QPageSize in(QLocale::Territory territory);
/// By the variable LC_PAPER, as other programs do, else by the language that the user has set up.
QPageSize ofLocale();

}
