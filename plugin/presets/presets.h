#pragma once

// The functions that preset what the next dialogs show. They write into the dialog state and return
// at once.

#include "platform/fmwrapper/FMWrapper.h"

// The caption of every dialog window from now on. Answers the caption.
fmx::errcode Do_TarvoSetCaption(std::int16_t function_id, const fmx::ExprEnv& environment,
                                const fmx::DataVect& parameters, fmx::Data& result);

// What the four fields of the next dialog start with, separated by "|". Answers the parameter.
fmx::errcode Do_TarvoPreEnterText(std::int16_t function_id, const fmx::ExprEnv& environment,
                                  const fmx::DataVect& parameters, fmx::Data& result);

// Left and top edge of the next dialog's content on the screen, separated by "|". Answers "0".
fmx::errcode Do_TarvoPosition(std::int16_t function_id, const fmx::ExprEnv& environment,
                              const fmx::DataVect& parameters, fmx::Data& result);

// The number of the field that has the focus when the next dialog opens. Answers the parameter.
fmx::errcode Do_TarvoSetFocus(std::int16_t function_id, const fmx::ExprEnv& environment,
                              const fmx::DataVect& parameters, fmx::Data& result);

// A number above 0 lets Escape cancel the next dialog. Answers "1" where it may now, "0" where not.
fmx::errcode Do_TarvoAllowEscape(std::int16_t function_id, const fmx::ExprEnv& environment,
                                 const fmx::DataVect& parameters, fmx::Data& result);

// The kinds of the four fields of every custom dialog from now on, as numbers separated by "|".
// Answers the parameter.
fmx::errcode Do_TarvoSetCustomControls(std::int16_t function_id, const fmx::ExprEnv& environment,
                                       const fmx::DataVect& parameters, fmx::Data& result);

// The pop-up menus of the four fields from now on, separated by "|", their items by carriage
// returns. Answers the number of menus.
fmx::errcode Do_TarvoPopUps(std::int16_t function_id, const fmx::ExprEnv& environment,
                            const fmx::DataVect& parameters, fmx::Data& result);

// The lines of every list-box dialog from now on, separated by carriage returns. Answers their
// number.
fmx::errcode Do_TarvoFillListBox(std::int16_t function_id, const fmx::ExprEnv& environment,
                                 const fmx::DataVect& parameters, fmx::Data& result);
