declare module '*/lib/corvane.mjs' {
    const create: import('./module.js').CreateModule;
    export default create;
}
