#pragma once

namespace corvane {

class Control;
class Form;

// Which controls can be used in which state of the others: a control whose row names the control
// that enables it can be used while that one can be used and is on, so that disabling a parent
// disables the whole chain. The master switch disables nearly everything.

// The rules of the control that was changed or clicked; the form runs them itself.
void RunEnablingRules(Form& form, const Control& changed);

// When the window becomes active.
void RunEnablingRulesOnActivation(Form& form);

// Every rule, parents first: after GoldMine's version became known.
void RunAllEnablingRules(Form& form);

}  // namespace corvane
