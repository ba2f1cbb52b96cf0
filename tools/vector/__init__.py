"""Vector drawing in plain Python: paths, an anti-aliased rasteriser, canvases and PNG files.

The skin images (tools/make_skin.py) and the demo clips (demo/make_demo.py) are drawn with it.
"""
