// The fields below the lists: the selected plug-in's file, and its class id or its VST id and vendor.
#pragma once

#include "Dialog.h"
#include "PluginInventory.h"

/// Holds nothing: a view of the dialog's controls for the length of one event.
class CPluginDetails {
  public:
    explicit CPluginDetails(const CDialog& dialog) : m_dialog(dialog) {}

    void Clear() const;
    /// Shows the fields that plug-ins of this category have.
    void ShowFieldsOf(Category category) const;
    void ShowPlugin(const CPluginInventory& inventory, const Guid& clsid, Category category) const;
    void ShowSeveral(Category category) const;

  private:
    void ShowLabelOf(Category category) const;
    void SetText(int id, const std::wstring& text) const { m_dialog.Item(id).SetText(text); }

    const CDialog& m_dialog;
};
