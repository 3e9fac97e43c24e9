// The two languages of the page. Every text stands in both, where it is used.

const kept = localStorage.getItem("language");
const asked = navigator.languages.map((tag) => tag.slice(0, 2)).find((tag) => tag === "es" || tag === "en");

export const language = kept ?? asked ?? "es";

export const say = (es, en) => (language === "es" ? es : en);

export function showLanguage() {
  document.documentElement.lang = language;
  for (const element of document.querySelectorAll("[data-es]"))
    element.textContent = say(element.dataset.es, element.dataset.en);
  for (const button of document.querySelectorAll("[data-language]")) {
    button.setAttribute("aria-pressed", String(button.dataset.language === language));
    button.addEventListener("click", () => {
      localStorage.setItem("language", button.dataset.language);
      location.reload();
    });
  }
}
