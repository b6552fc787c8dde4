// Makes dist/: the client in one file, and what the extension takes from the rest of the repository.
import { build } from "esbuild";
import { copyFileSync, mkdirSync, readdirSync, readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const folder = dirname(dirname(fileURLToPath(import.meta.url)));
const repository = join(folder, "..", "..");
const production = process.argv.includes("--production");

/** The licences of the packages that are in the bundle. */
function licences(inputs) {
  const packages = new Set(inputs.map((path) => /.*node_modules\/(?:@[^/]+\/)?[^/]+/.exec(path)?.[0]));
  packages.delete(undefined);
  return [...packages].sort().map((path) => {
    const name = readdirSync(join(folder, path)).find((file) => /^licen[cs]e/i.test(file));
    if (name === undefined) throw new Error(`${path} has no licence`);
    return `# ${path.replace(/.*node_modules\//, "")}\n\n${readFileSync(join(folder, path, name), "utf8")}`;
  });
}

mkdirSync(join(folder, "dist"), { recursive: true });
copyFileSync(join(repository, "docs/velops.schema.json"), join(folder, "dist/velops.schema.json"));
copyFileSync(join(repository, "runtime/velops_gdb.py"), join(folder, "dist/velops_gdb.py"));
copyFileSync(join(repository, "LICENSE"), join(folder, "LICENSE"));

const { metafile } = await build({
  absWorkingDir: folder,
  entryPoints: ["src/extension.ts"],
  outfile: "dist/extension.js",
  bundle: true,
  platform: "node",
  target: "node18",
  format: "cjs",
  external: ["vscode"],
  minify: production,
  sourcemap: !production,
  metafile: true,
  logLevel: "warning",
});
writeFileSync(join(folder, "dist/licences.txt"), licences(Object.keys(metafile.inputs)).join("\n"));
