"use strict";
// The page's own texts. The module's come from its table, in the core.

// By their ids in that table.
const moduleTexts = { copyright: 1, keyGroup: 7, restore: 15 };

const pageTexts = {
  en: {
    about: "Smooths the stair-stepped edges of cels and line art, on your own machine.",
    open: "Open a picture…", sample: "Sample", save: "Save PNG", picture: "Picture", controls: "Controls",
    view: "The picture, before on the left of the divider and after on its right",
    divider: "Divider between before and after",
    before: "before", after: "after", smaller: "Zoom out", larger: "Zoom in", fit: "Fit",
    edges: "Edges", loupe: "Loupe",
    keys: "Wheel, + and −: zoom. 0: fit, 1: single pixels. Drag or arrow keys: move. E: edges, L: loupe. "
      + "Drop or paste a picture anywhere.",
    dropper: "Pick from picture",
    pick: "Click the colour to key out, or move with the arrow keys and press Enter. Escape: cancel.",
    red: "red", green: "green", blue: "blue",
    loading: "Reading the picture…", tooLarge: "The picture is too large for this browser's memory.",
    notAPicture: "This file is no picture that the browser can read.", broken: "This PNG file is damaged.",
    failed: "The picture could not be processed.", saving: "Writing the PNG…", saved: "Saved as ",
    inexact: "The browser has changed the colours of translucent pixels while reading; a PNG comes in exactly.",
    noSupport: "This browser is too old for the page: it needs WebAssembly with vectors, and streams that decompress.",
    bits: "bits a channel", milliseconds: "ms",
    descriptions: {},  // the core's own are English
  },
  ja: {
    about: "セルや線画の輪郭の段差を滑らかにします。画像が外部に送信されることはありません。",
    open: "画像を開く…", sample: "サンプル", save: "PNG を保存", picture: "画像", controls: "パラメータ",
    view: "画像（境界線の左が適用前、右が適用後）", divider: "適用前と適用後の境界線",
    before: "適用前", after: "適用後", smaller: "縮小", larger: "拡大", fit: "全体", edges: "輪郭", loupe: "ルーペ",
    keys: "ホイール、+、−：拡大・縮小　0：全体、1：等倍　ドラッグ、矢印キー：移動　E：輪郭、L：ルーペ　"
      + "画像はどこにでもドロップまたは貼り付けできます。",
    dropper: "画像から色を選ぶ", pick: "透明にする色をクリックするか、矢印キーで移動して Enter を押してください。Esc：中止",
    red: "赤", green: "緑", blue: "青",
    loading: "画像を読み込んでいます…", tooLarge: "画像が大きすぎて、このブラウザーのメモリーに収まりません。",
    notAPicture: "このファイルはブラウザーで読み込める画像ではありません。", broken: "この PNG ファイルは壊れています。",
    failed: "画像を処理できませんでした。", saving: "PNG を書き出しています…", saved: "保存しました：",
    inexact: "読み込み時に、ブラウザーが半透明のピクセルの色を変えました。PNG なら正確に読み込めます。",
    noSupport: "このブラウザーは古いため使用できません。WebAssembly のベクトル命令と伸長ストリームが必要です。",
    bits: "ビット／チャンネル", milliseconds: "ミリ秒",
    descriptions: {
      color_threshold: "隣り合う 2 つのピクセルの色の差がこの値を超えると輪郭とみなします。",
      softness: "輪郭の各段を、その長さの何パーセントまで混ぜるかを指定します。0 にすると平滑化しません。",
      bias: "段に沿って混ぜる割合がどれだけ速く減るかを指定します。",
      color_key_enable: "key color を透明にします。現れた輪郭は透明部分に対して滑らかになります。",
      key_color: "透明にする色です。",
      key_color_threshold: "key color からどれだけ離れた色までを同じ色とみなすかを指定します。",
      invert: "key color 以外のすべての色を透明にします。",
    },
  },
};

let language = "en";
let fromModule = { en: {}, ja: {} };  // until the core tells

const text = name => pageTexts[language][name] ?? fromModule[language][name] ?? "";

function showTexts() {
  document.documentElement.lang = language;
  for (const element of document.querySelectorAll("[data-text]")) element.textContent = text(element.dataset.text);
  for (const element of document.querySelectorAll("[data-label]"))
    element.setAttribute("aria-label", text(element.dataset.label));
  for (const element of document.querySelectorAll("[data-control]"))
    element.textContent = pageTexts[language].descriptions[element.dataset.control] ?? element.dataset.english;
}
