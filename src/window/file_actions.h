// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a person does with files outside of Quirn.

#pragma once

#include <QMimeData>
#include <filesystem>
#include <memory>
#include <vector>

namespace quirn::window {

using Paths = std::vector<std::filesystem::path>;

// In the program that the desktop has for each.
void openFiles(const Paths& files);

// In the file manager, selected there where it can do that.
void showInFolder(const Paths& files);

// As what is dragged or copied.
std::unique_ptr<QMimeData> mimeDataOf(const Paths& files);

// The files that are dropped or pasted; none for other data.
Paths filesIn(const QMimeData* data);

}  // namespace quirn::window
