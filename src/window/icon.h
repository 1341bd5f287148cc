// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The icons of the window: one set of line drawings on a grid of 24, in the color of the text that
// they stand beside. Those of operations are looked up by the symbol that the operation names.

#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <string_view>

#include "core/operation_type.h"
#include "shell/file_kind.h"

namespace quirn::window {

// Makes the drawings reachable; called once, before the first of them is asked for.
void loadIcons();

// The drawing for a symbol name such as "doc.on.doc": its own, else that of the nearest name
// ("doc.badge.gearshape" is a "doc"), else the one of any tool. Names a file of icons.qrc.
std::string_view drawingFor(std::string_view symbol);

// A drawing as an icon that is sharp at every size, in the text color of its mode.
QIcon icon(std::string_view drawing);

// The same in a fixed color, at a size in device-independent pixels.
QPixmap iconPixmap(std::string_view drawing, int size, const QColor& color, double pixelRatio);

std::string_view drawingFor(FileKind kind);

// A quiet square in the color of the operation's family, with its icon on it.
QPixmap operationTile(const OperationInfo& info, int size, const QPalette& palette, double pixelRatio);
QPixmap fileTile(FileKind kind, int size, const QPalette& palette, double pixelRatio);

}  // namespace quirn::window
