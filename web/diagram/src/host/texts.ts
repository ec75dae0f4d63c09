// The words of our own that readers see or hear, by language.

import { languagesFor } from "./languages.ts";

const languages = ["en", "de", "fr", "es"] as const;

const table = {
  menu: ["Menu", "Menü", "Menu", "Menú"],
  print: ["Print…", "Drucken…", "Imprimer…", "Imprimir…"],
  copyData: ["Copy data", "Daten kopieren", "Copier les données", "Copiar los datos"],
  savePicture: ["Save picture", "Bild speichern", "Enregistrer l’image", "Guardar la imagen"],
  asSvg: ["SVG (for print)", "SVG (für Druck)", "SVG (pour l’impression)", "SVG (para imprimir)"],
  asPng: ["PNG (for screens)", "PNG (für Bildschirme)", "PNG (pour l’écran)", "PNG (para pantalla)"],
  saveCsv: ["Save data as CSV", "Daten als CSV speichern", "Enregistrer les données en CSV",
    "Guardar los datos en CSV"],
  showTable: ["Show data as a table", "Daten als Tabelle zeigen", "Afficher les données en tableau",
    "Mostrar los datos en una tabla"],
  fullScreen: ["Full screen", "Vollbild", "Plein écran", "Pantalla completa"],
  close: ["Close", "Schließen", "Fermer", "Cerrar"],
  copied: ["Data copied", "Daten kopiert", "Données copiées", "Datos copiados"],
  notCopied: ["The data could not be copied", "Die Daten konnten nicht kopiert werden",
    "Les données n’ont pas pu être copiées", "No se pudieron copiar los datos"],
  all: ["All", "Alle", "Tout", "Todo"],
  showAll: ["Show all", "Alles zeigen", "Tout afficher", "Mostrar todo"],
  series: ["Series", "Reihen", "Séries", "Series"],
  row: ["Row {0}", "Zeile {0}", "Ligne {0}", "Fila {0}"],
  column: ["Column {0}", "Spalte {0}", "Colonne {0}", "Columna {0}"],
  noValue: ["no value", "kein Wert", "aucune valeur", "sin valor"],
  range: ["{0} to {1}", "{0} bis {1}", "{0} à {1}", "{0} a {1}"],
  upTo: ["up to {0}", "bis {0}", "jusqu’à {0}", "hasta {0}"],
  oneValue: ["1 value", "1 Wert", "1 valeur", "1 valor"],
  values: ["{0} values", "{0} Werte", "{0} valeurs", "{0} valores"],
  selected: ["selected", "ausgewählt", "sélectionné", "seleccionado"],
  notSelected: ["not selected", "nicht ausgewählt", "non sélectionné", "no seleccionado"],
  chart: ["Chart", "Diagramm", "Graphique", "Gráfico"],
  table: ["Table", "Tabelle", "Tableau", "Tabla"],
  walk: ["Arrow keys go from value to value", "Pfeiltasten gehen von Wert zu Wert",
    "Les flèches vont de valeur en valeur", "Las flechas van de valor en valor"],
  sortedUp: ["{0}: ascending", "{0}: aufsteigend", "{0} : ordre croissant", "{0}: ascendente"],
  sortedDown: ["{0}: descending", "{0}: absteigend", "{0} : ordre décroissant", "{0}: descendente"],
  moved: ["{0}: place {1} of {2}", "{0}: Platz {1} von {2}", "{0} : place {1} sur {2}", "{0}: lugar {1} de {2}"],
  size: ["{0}: {1} pixels", "{0}: {1} Pixel", "{0} : {1} pixels", "{0}: {1} píxeles"],
  colours: ["Colours from {0} to {1}", "Farben von {0} bis {1}", "Couleurs de {0} à {1}", "Colores de {0} a {1}"],
  moreRows: ["Further rows: {0}", "Weitere Zeilen: {0}", "Autres lignes : {0}", "Otras filas: {0}"],
  moreColumns: ["Further columns: {0}", "Weitere Spalten: {0}", "Autres colonnes : {0}", "Otras columnas: {0}"],
} as const satisfies Record<string, readonly [string, string, string, string]>;

export type TextName = keyof typeof table;

/** Gives a text by its name, with `{0}`, `{1}` … replaced by the further arguments. */
export type Texts = (name: TextName, ...values: (string | number)[]) => string;

/** The texts of a language tag; those in English where there are none. */
export function textsOf(tag: string): Texts {
  const language = languages.findIndex((name) => name === tag.toLowerCase().split("-")[0]);
  return (name, ...values) =>
    table[name][Math.max(language, 0)]?.replace(/\{(\d)\}/g, (_, index) => String(values[Number(index)] ?? "")) ?? name;
}

/** The texts for an element: by the `lang` of the nearest one around it, or else by the reader's language. */
export function textsFor(element: HTMLElement): Texts {
  return textsOf(languagesFor(element)[0] ?? "en");
}
