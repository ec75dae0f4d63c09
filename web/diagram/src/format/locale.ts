// The locale of a chart's formats.
import { isTrue } from "../settings/read_style.ts";
import type { Style } from "../settings/style.ts";

export interface FormatLocale {
  /** A tag that `Intl` takes. */
  readonly tag: string;
  /** As `XX`; empty where the tag names none. */
  readonly country: string;
}

/**
 * The locale of a style: that of its three codes, whatever they hold, or the reader's: the first of `wishes`, language
 * tags, that there are data for. What is no code is left out; a language that nobody knows counts as English.
 */
export function localeOf(style: Style, wishes: readonly string[]): FormatLocale {
  if (isTrue(style.FormatUseDefaultLocale)) {
    const tag = wishes.map(knownTag).find((known) => known !== null) ?? "en-US";
    return { tag, country: new Intl.Locale(tag).region ?? "" };
  }
  const language = (/^[a-z]{2,8}$/i.test(style.FormatLanguage) && knownTag(style.FormatLanguage)) || "en";
  const country = /^(?:[a-z]{2}|\d{3})$/i.test(style.FormatCountry) ? style.FormatCountry.toUpperCase() : "";
  const tag = new Intl.Locale(language, country ? { region: country } : {}).toString();
  // The one variant that formats know.
  const isPosix = tag === "en-US" && style.FormatVariant.toUpperCase() === "POSIX";
  return { tag: isPosix ? `${tag}-u-va-posix` : tag, country };
}

/** The country that a locale stands for: its own or, without one, the likeliest. */
export function likeliestCountry(locale: FormatLocale): string {
  return locale.country || (new Intl.Locale(locale.tag).maximize().region ?? "");
}

// The tag in its present form (`iw` is `he`) if there are data for its language.
function knownTag(tag: string): string | null {
  try {
    return Intl.NumberFormat.supportedLocalesOf(tag)[0] ?? null;
  } catch {
    return null;  // no language tag at all
  }
}
