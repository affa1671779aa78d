// The values that a command's result may have, as the schema of the JSON documents lists them.
#pragma once

#include <QString>
#include <QStringList>

namespace hx::host {

// docs/formats/schema/hxhost.schema.json, word for word.
extern const char resultSchemaText[];

// Whether some result of the command ("update", "image build") has a value under this dotted name.
bool resultHasField(const QString& command, const QString& name);

// Every dotted name, down to single values and lists, in alphabetical order.
QStringList resultFields(const QString& command);

} // namespace hx::host
