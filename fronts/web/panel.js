"use strict";
// The controls, made from what the core says of them.

const byId = id => document.getElementById(id);

function make(name, attributes = {}, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  element.append(...children);
  return element;
}

const hexOf = channels => "#" + channels.slice(0, 3).map(value => value.toString(16).padStart(2, "0")).join("");
const channelsOf = hex => [1, 3, 5].map(at => parseInt(hex.slice(at, at + 2), 16));

// Each kind of control: its elements, how they show values, and which values they hold.
const kinds = {
  slider(control, changed) {
    const { minimum: min, maximum: max } = control;
    const range = make("input", { type: "range", id: control.key, min, max });
    const number = make("input", { type: "number", min, max, "aria-label": control.name });
    range.addEventListener("input", () => {
      number.value = range.value;
      changed();
    });
    number.addEventListener("input", () => {
      if (number.value === "" || !number.checkValidity()) return;
      range.value = number.value;
      changed();
    });
    number.addEventListener("change", () => number.value = range.value);
    return {
      parts: [range, number], read: () => [range.valueAsNumber],
      show: ([value]) => range.value = number.value = value,
    };
  },

  checkbox(control, changed) {
    const box = make("input", { type: "checkbox", id: control.key });
    box.addEventListener("change", changed);
    return { parts: [box], read: () => [box.checked ? 1 : 0], show: ([value]) => box.checked = value !== 0 };
  },

  color(control, changed) {
    const color = make("input", { type: "color", id: control.key });
    color.addEventListener("input", changed);
    const dropper = make("button", { type: "button", id: "dropper", "aria-pressed": "false", "data-text": "dropper" });
    return {
      parts: [color, dropper], read: () => channelsOf(color.value), show: channels => color.value = hexOf(channels),
    };
  },
};

class Panel {
  // `changed` is called whenever a value is another.
  constructor(form, controls, changed) {
    this.controls = controls;
    const group = make("fieldset", {}, make("legend", { "data-text": "keyGroup" }));
    this.fields = controls.map(control => {
      const field = kinds[control.kind](control, () => {
        this.enable();
        changed();
      });
      const label = make("label", { for: control.key }, control.name);
      const described = `${control.key}-description`;
      const description = make("p", { id: described, class: "description", "data-control": control.key,
                                      "data-english": control.description });
      field.parts[0].setAttribute("aria-describedby", described);
      const row = make("div", { class: "row" }, ...field.parts);
      if (control.kind === "checkbox") row.append(label);
      const whole = make("div", {}, ...(control.kind === "checkbox" ? [] : [label]), row, description);
      (control.inKeyGroup ? group : form).append(whole);
      if (control.inKeyGroup) form.append(group);
      return field;
    });
    const restore = make("button", { type: "button", id: "restore", "data-text": "restore" });
    restore.addEventListener("click", () => {
      this.restore();
      changed();
    });
    form.append(restore);
    form.addEventListener("submit", event => event.preventDefault());
    this.restore();
  }

  settings() { return this.fields.map(field => field.read()); }

  restore() {
    this.controls.forEach(({ values }, i) => this.fields[i].show(values));
    this.enable();
  }

  // The colour goes to the colour key, which is then on.
  key(channels) {
    this.controls.forEach(({ kind, inKeyGroup, key }, i) => {
      if (kind === "color") this.fields[i].show(channels);
      if (inKeyGroup && key === keySwitch) this.fields[i].show([1]);
    });
    this.enable();
  }

  // What belongs to the key waits for it to be on, but for the dropper, which turns it on.
  enable() {
    const on = byId(keySwitch).checked;
    this.controls.forEach(({ inKeyGroup, key }, i) => {
      if (!inKeyGroup || key === keySwitch) return;
      for (const part of this.fields[i].parts) if (part.id !== "dropper") part.disabled = !on;
    });
  }
}
const keySwitch = "color_key_enable";
