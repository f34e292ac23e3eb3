#pragma once

#include "doc/AppCommands.h"

#include <QString>

#include <optional>
#include <vector>

class CCorvanaDoc;

enum class CMenuID
{
    file,
    backup,
    archive,
    restore,
    options,
    members,
    memberReports,
    workouts,
    workoutReports,
    evaluations,
    evaluationReports,
    bodyComps,
    bodyCompReports,
    help
};

/// One menu. Menus stand in the order in which the commands first name them.
struct CMenu
{
    CMenuID m_id = CMenuID::file;
    std::optional<CMenuID> m_parent; ///< none: it stands in the menu bar
    QString m_strTitle; ///< with its mnemonic
    QString m_strPrompt; ///< for the status bar, may be empty
};

using CCommandHandler = void (*)(CCorvanaDoc&, CAppCommands&);

/// One command of the program. There is no more to a command than its row: menus, keys, prompts
/// and routing are made from the table.
struct CCommand
{
    int m_nNumber = 0;
    std::optional<CMenuID> m_menu; ///< none: the number is reserved
    QString m_strText; ///< of the menu item, with its mnemonic
    QString m_strKey; ///< may be empty
    QString m_strPrompt; ///< for the status bar
    CCommandHandler m_fnRun = nullptr; ///< null only when the number is reserved
    std::optional<CAppOption> m_option = {}; ///< whose state the item's check mark shows
    QString m_strTip = {}; ///< empty: the item's text, see TipOf
};

std::vector<CMenu> MenuTable();

/// All commands, in the order of the menus.
std::vector<CCommand> CommandTable();

/// The short text of a command: its own, else the item's without mnemonic and dots.
QString TipOf(CCommand const& command);
