#pragma once

#include <QString>

/// `text` as one field of comma-separated values (RFC 4180): a text with a comma, a quotation mark or a line break
/// stands in quotation marks, those inside doubled; any other stands as it is.
QString csvField(QString text);
