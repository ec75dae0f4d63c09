// A chart's picture as a file. All goes through data: addresses, which strict policies allow.
import type { Scene } from "../charts/chart.ts";
import { picture, tag } from "../charts/svg_text.ts";
import { tablePicture } from "../grid/table_picture.ts";
import type { Texts } from "../host/texts.ts";

/** The drawing of a root as an SVG document of its own, with a ground; null where there is none. */
export function svgOf(drawing: HTMLElement, ground: string): string | null {
  const drawn = drawing.querySelector("svg");
  if (!drawn) return null;
  const { width, height } = drawn.getBoundingClientRect();
  const copy = drawn.cloneNode(true) as SVGSVGElement;
  copy.setAttribute("xmlns", "http://www.w3.org/2000/svg");
  copy.setAttribute("width", String(Math.round(width)));
  copy.setAttribute("height", String(Math.round(height)));
  copy.removeAttribute("style");
  const paper = document.createElementNS("http://www.w3.org/2000/svg", "rect");
  for (const [name, value] of Object.entries({ width: "100%", height: "100%", fill: ground })) {
    paper.setAttribute(name, value);
  }
  copy.prepend(paper);
  return new XMLSerializer().serializeToString(copy);
}

/** A table as an SVG document: the rows and columns that have room, as they were before the reader moved any. */
export function svgOfTable(scene: Scene, label: string, texts: Texts): string {
  const { fontFamily, fontSize, fontWeight, fontStyle } = scene.look;
  const font = {
    "font-family": fontFamily, "font-size": `${fontSize}px`, "font-weight": fontWeight, "font-style": fontStyle,
  };
  return picture(scene.width, scene.height, label, tag("g", font, tablePicture(scene, texts)));
}

/** An SVG document's address, for links and images. */
export function svgAddress(svg: string): string {
  return `data:image/svg+xml;charset=utf-8,${encodeURIComponent(svg)}`;
}

/** Draws an SVG document as a PNG, `scale` times as large, and gives its address. */
export async function pngAddress(svg: string, scale: number): Promise<string> {
  const image = new Image();
  image.src = svgAddress(svg);
  await image.decode();
  const canvas = document.createElement("canvas");
  canvas.width = image.naturalWidth * scale;
  canvas.height = image.naturalHeight * scale;
  canvas.getContext("2d")?.drawImage(image, 0, 0, canvas.width, canvas.height);
  return canvas.toDataURL("image/png");
}

/** Lets the reader save what an address holds. */
export function saveAs(name: string, address: string): void {
  const link = document.createElement("a");
  link.href = address;
  link.download = name;
  link.click();
}

/** A name for files, from a text for people. */
export function fileNameOf(text: string): string {
  return text.normalize("NFC").replace(/[^\p{Letter}\p{Number}]+/gu, "-").replace(/^-|-$/g, "").slice(0, 80) || "chart";
}
