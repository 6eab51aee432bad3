#pragma once

#include <QString>

namespace normaris {

// An entry of a pick list: the code it stands for and the name shown.
struct CodeAndName {
    QString code;
    QString name;
    bool operator==(const CodeAndName &) const = default;
};

} // namespace normaris
