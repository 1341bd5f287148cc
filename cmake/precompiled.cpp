// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Empty: a precompiled header needs a target, and a target needs a source.
