// The whole screen for an element. Safari before 16.4 has names of its own for it; an iPhone, and a
// frame that was given no leave, have none.
export const hasFullScreen = () => document.fullscreenEnabled ?? document.webkitFullscreenEnabled ?? false;
export const fullScreenElement = () => document.fullscreenElement ?? document.webkitFullscreenElement;
export const leaveFullScreen = () => (document.exitFullscreen ?? document.webkitExitFullscreen).call(document);

export async function toggleFullScreen(element, say) {
  try {
    if (fullScreenElement()) await leaveFullScreen();
    else await (element.requestFullscreen ?? element.webkitRequestFullscreen).call(element);
  } catch {
    say('This browser keeps the page in its window.');
  }
}
