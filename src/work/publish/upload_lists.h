#pragma once

#include "publish/upload_wizard.h"

/// The lists of the pages: addresses, wads to import, waves from elsewhere, wads for tom files.
namespace kestrova
{

enum class AddressKind { Email, Site };
/// Ask for a new address, for another text of the selected one, take the selected one out.
void AddAddress(UploadWizard& wizard, AddressKind kind);
void ChangeAddress(UploadWizard& wizard, AddressKind kind);
void RemoveAddress(UploadWizard& wizard, AddressKind kind);

enum class RowKind { ImportWads, ExternWaves, TomWads };
/// Puts what was typed into its row, and selects another one. False, with a message, when what was
/// typed makes no row; it stays selected then.
bool SelectRow(UploadWizard& wizard, RowKind kind, std::size_t row);
/// Appends an empty row and selects it. False as above.
bool AddRow(UploadWizard& wizard, RowKind kind);
/// Stores what the boxes hold in the selected row. False, with a message, when it makes no row, or
/// none is selected.
bool UpdateRow(UploadWizard& wizard, RowKind kind);
/// Takes the selected row out, and what was typed for it.
void RemoveRow(UploadWizard& wizard, RowKind kind);
/// What the list shows.
std::vector<std::string> RowTexts(const UploadWizard& wizard, RowKind kind);

/// Puts the rows into the configuration: what is still typed is stored first, and rows that hold
/// nothing go. False, with a message, when a row is not fit to be written, which is selected then,
/// or all of them need more room than there is.
bool StoreRows(UploadWizard& wizard, RowKind kind);

/// Fills the pages from the configuration.
void LoadConfigIntoPages(UploadWizard& wizard);

} // namespace kestrova
