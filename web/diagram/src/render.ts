// Draws charts without a browser: reads a request a line and writes an answer a line, both JSON.
//
//     echo '{"settings": {"XmlStyle": "...", "XmlContents": "..."}, "width": 480, "height": 320}' |
//       node plexoras-render.mjs
//
// With --once it reads one request and ends.
import { createInterface } from "node:readline";

import { drawPicture, type PictureRequest } from "./picture.ts";

declare const process: {
  readonly argv: readonly string[];
  readonly stdin: unknown;
  readonly stdout: { write(text: string): boolean };
};

async function run(): Promise<void> {
  const isOnce = process.argv.includes("--once");
  const lines = createInterface({ input: process.stdin, crlfDelay: Infinity });
  for await (const line of lines) {
    if (line.trim() === "") continue;
    process.stdout.write(`${JSON.stringify(answerTo(line))}\n`);
    if (isOnce) break;
  }
}

/** A request's picture, or what is wrong with it. */
function answerTo(line: string): { svg: string } | { error: string; setting?: string } {
  try {
    return { svg: drawPicture(requestOf(JSON.parse(line))) };
  } catch (problem) {
    const error = problem instanceof Error ? problem.message : String(problem);
    const setting = problem instanceof Error && "setting" in problem ? { setting: String(problem.setting) } : {};
    return { error, ...setting };
  }
}

function requestOf(json: unknown): PictureRequest {
  if (typeof json !== "object" || json === null) throw new Error("a request is a JSON object");
  const { settings = {}, width, height, theme, patterns, prefix, languages } = json as Record<string, unknown>;
  if (typeof settings !== "object" || settings === null) throw new Error("\"settings\" holds texts by their names");
  for (const [name, text] of Object.entries(settings)) {
    if (typeof text !== "string") throw new Error(`setting ${JSON.stringify(name)} is no text`);
  }
  return {
    settings: settings as Record<string, string>,
    width: size("width", width, 480),
    height: size("height", height, 320),
    isDark: theme === "dark",
    hasPatterns: patterns === true,
    prefix: typeof prefix === "string" ? prefix.replace(/[^\w-]/g, "") : "",
    languages: Array.isArray(languages) ? languages.map(String) : ["en-US"],
  };
}

const largest = 10_000;

function size(name: string, value: unknown, usual: number): number {
  if (value === undefined) return usual;
  if (typeof value === "number" && value >= 1 && value <= largest) return Math.round(value);
  throw new Error(`"${name}" is a number of pixels from 1 to ${largest}`);
}

await run();
